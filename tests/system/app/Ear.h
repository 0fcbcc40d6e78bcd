#pragma once

#include "system/app/Desk.h"
#include "system/sound/Tones.h"

namespace orvantine::desk {

/// A sound server of a desk's own, to which the programs that are started from then on are led, and a recording of what
/// is heard there.
class Ear
{
public:
    explicit Ear(Desk& desk);
    ~Ear();
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    /// The tones that tracks have.
    sound::ToneTable table;

    /// The tones that have been heard since the last mark.
    [[nodiscard]] QList<double> tones() const { return hertzOf(findTones(heard(), table)); }
    void mark();
    /// Waits until the last tone that is heard from now on is this one.
    [[nodiscard]] bool awaitTone(double hertz);
    /// Waits until there is a second of silence, from now on or soon.
    [[nodiscard]] bool awaitSilence();
    /// Waits until that many tones have been heard since the last mark.
    [[nodiscard]] bool awaitTones(qsizetype count) const;
    /// Ends the recording; all that was heard.
    [[nodiscard]] QList<double> allTones() const;

    /// Asks the server's own tool.
    QString control(const QStringList& arguments) const;

private:
    [[nodiscard]] sound::Recording heard() const;

    Desk& m_desk;
    QString m_folder;
    QString m_recording;
    std::ptrdiff_t m_mark = 0;
};

} // namespace orvantine::desk
