#include "platform/Cues.h"

#include <QFile>

/// A library's resources have to be asked for, or the linker leaves them out; outside of any namespace, as the macro
/// demands.
static void loadCues()
{
    Q_INIT_RESOURCE(cues);
}

namespace orvantine {

using namespace Qt::StringLiterals;

QStringList cueNames()
{
    return {u"PLAY"_s, u"STOP"_s, u"READY"_s, u"TIPP"_s};
}

QByteArray cueNamed(const QString& name)
{
    const QStringList names = cueNames();
    const qsizetype found = names.indexOf(name.toUpper());
    if (found < 0)
        return {};
    loadCues();
    QFile cue(u":/WAVE/%1.wav"_s.arg(names[found]));
    return cue.open(QFile::ReadOnly) ? cue.readAll() : QByteArray();
}

} // namespace orvantine
