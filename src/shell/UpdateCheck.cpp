#include "shell/UpdateCheck.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/Siblings.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 DaysBetween = 30;

/// Day, month and year by their places in the text, whatever stands between them. An unreadable date is none.
QDate dateAtPlaces(const QString& text)
{
    const auto number = [&text](int from, int length) {
        const QString digits = text.mid(from, length);
        for (const QChar digit : digits)
            if (digit < u'0' || digit > u'9')
                return 0;
        return digits.size() == length ? digits.toInt() : 0;
    };
    return QDate(number(6, 4), number(3, 2), number(0, 2));
}

bool isDue(const Root& root, const QDate& today)
{
    const Setting stored = readSetting(root, u"Update"_s);
    // A first run is overdue; so is that of a 29 February, though there was none a year ago.
    if (!stored.present)
        return true;
    const QDate last = dateAtPlaces(stored.text());
    return last.isValid() && CalendarCalc::DiffDays(last, today) >= DaysBetween;
}

} // namespace

qint64 CalendarCalc::DiffDays(const QDate& from, const QDate& to)
{
    return from.daysTo(to);
}

void UpdateCheck(Root& root)
{
    if (readSetting(root, u"NoUpdate"_s).is(1))
        return;
    // The installer of an earlier update goes.
    const QString setup = FileDirPath::join(programFile(root, u"Updates"_s), u"Setup.exe");
    if (Dateiexistenz::FileExists(root, setup))
        root.files.remove(setup);
    const QDate today = root.services.events.now().date();
    if (!isDue(root, today))
        return;
    writeSetting(root, u"Update"_s, dateText(today));
    if (!startSibling(root, u"Netzpflege.exe"_s, u"/a"_s))
        return;
    root.Timer3.Enabled = true;
    Command(root).lastYield();
}

void mnuUpdates_Click(Root& root)
{
    Command command(root);
    if (command.ask({.text = u"Für eine Aktualisierung muss ''Orvanten Manager'' beendet werden.  "_s,
                     .title = u" Internet Updates"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::OkCancel}) != Answer::Ok)
        return;
    const QString program = u"Netzpflege.exe"_s;
    const bool there = Dateiexistenz::FileExists(root, programFile(root, program));
    if (!startSibling(root, there ? program : u"Netzpflege.dll"_s, u"/a"_s))
        return showQuietly(root, u"Kein Update-Programm vorhanden. Neue Versionen kommen mit der Paketverwaltung."_s);
    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Update"_s,
                         dateText(root.services.events.now().date()));
}

} // namespace orvantine
