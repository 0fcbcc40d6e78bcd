#include "shell/UpdateCheck.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// It is the 20 November 2026.
class Updates : public CatalogueWorld
{
protected:
    Updates() { putCatalogue({u"Erste"_s}); }

    [[nodiscard]] QString program(const QString& name) const { return desktop.folders.program + u'/' + name; }
    [[nodiscard]] std::string started() { return calls({u"launcher.start"_s}); }
    [[nodiscard]] std::string start(const QString& name) const
    {
        return "launcher.start program command \"" + program(name).toStdString() + " /a\" target \"" +
               program(name).toStdString() + "\" argument \"/a\"";
    }
    [[nodiscard]] std::string stored()
    {
        return desktop.profiles().value(database(), u"Options"_s, u"Update"_s).toStdString();
    }
    /// A check on its own.
    void check()
    {
        root().Timer3.Enabled = false;
        forgetCalls();
        UpdateCheck(root());
    }
};

} // namespace

TEST_F(Updates, AFirstRunCountsAsOverdue)
{
    put(program(u"Netzpflege.exe"_s), "x");
    DesktopTest::start();
    EXPECT_EQ(start(u"Netzpflege.exe"_s), started());
    EXPECT_EQ("sz \"20.11.2026\"", setting(u"Update"_s).toStdString());
    EXPECT_TRUE(root().Timer3.Enabled.value());
}

TEST_F(Updates, ThirtyDaysAreThePeriod)
{
    struct Case
    {
        QString last;
        bool due;
    };
    put(program(u"Netzpflege.exe"_s), "x");
    DesktopTest::start();
    for (const Case& one : std::vector<Case>{{u"20.11.2026"_s, false},
                                             {u"22.10.2026"_s, false},
                                             {u"21.10.2026"_s, true},
                                             {u"20.11.2025"_s, true},
                                             // By place: what stands between the numbers does not count.
                                             {u"21/10-2026 und mehr"_s, true},
                                             {u"01.01.2030"_s, false},
                                             // An unreadable date counts as not due.
                                             {u"31.02.2026"_s, false},
                                             {u"1.2.2026"_s, false},
                                             {u"gestern"_s, false},
                                             {QString(), false},
                                             {u"01.01.-001"_s, false},
                                             {u"٠١.٠١.٢٠٢٠"_s, false}}) {
        setting(u"Update"_s, stringSetting(one.last));
        check();
        EXPECT_EQ(one.due ? start(u"Netzpflege.exe"_s) : std::string(), started()) << one.last.toStdString();
        EXPECT_EQ(one.due, root().Timer3.Enabled.value()) << one.last.toStdString();
        EXPECT_EQ(one.due ? u"sz \"20.11.2026\""_s : u"sz \"%1\""_s.arg(one.last), setting(u"Update"_s));
    }
    for (const SettingValue& odd :
         {dwordSetting(7), binarySetting(20112026), SettingValue{.type = SettingType::None, .text = {}, .bytes = {}}}) {
        setting(u"Update"_s, odd);
        check();
        EXPECT_EQ("", started());
    }
}

TEST_F(Updates, TheTwentyNinthOfFebruaryCountsAsDueOnAFirstRun)
{
    desktop.events().setNow(QDateTime(QDate(2028, 2, 29), QTime(12, 0)));
    put(program(u"Netzpflege.exe"_s), "x");
    DesktopTest::start();
    EXPECT_EQ(start(u"Netzpflege.exe"_s), started());
    EXPECT_EQ("sz \"29.02.2028\"", setting(u"Update"_s).toStdString());
}

TEST_F(Updates, NoUpdateTurnsTheCheckOff)
{
    setting(u"NoUpdate"_s, dwordSetting(1));
    put(program(u"Netzpflege.exe"_s), "x");
    put(program(u"Updates/Setup.exe"_s), "x");
    DesktopTest::start();
    EXPECT_EQ("", started());
    EXPECT_EQ("(absent)", setting(u"Update"_s).toStdString());
    EXPECT_EQ("x", bytes(program(u"Updates/Setup.exe"_s)).toStdString());
}

TEST_F(Updates, TheInstallerOfAnEarlierUpdateGoes)
{
    setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
    put(program(u"Updates/Setup.exe"_s), "x");
    DesktopTest::start();
    EXPECT_EQ("(missing)", bytes(program(u"Updates/Setup.exe"_s)).toStdString());
    EXPECT_EQ("", started());
}

TEST_F(Updates, TheStepsComeInTheirOrder)
{
    DesktopTest::start();
    put(program(u"Netzpflege.exe"_s), "x");
    put(program(u"Updates/Setup.exe"_s), "x");
    setting(u"Update"_s, stringSetting(u"01.01.2026"_s));
    root().Timer3.Enabled = false;
    desktop.launcher.Started = [this](const LaunchRequest&) { EXPECT_FALSE(root().Timer3.Enabled.value()); };
    const int yields = desktop.events().yields();
    bool yielded = false;
    desktop.events().atYield(1, [this, &yielded] {
        yielded = true;
        EXPECT_TRUE(root().Timer3.Enabled.value());
        desktop.log.call(u"settings.yield"_s);
    });
    forgetCalls();
    UpdateCheck(root());
    EXPECT_TRUE(yielded);
    EXPECT_EQ(yields + 1, desktop.events().yields());
    QString order = QString::fromStdString(calls(
        {u"settings.value"_s, u"settings.setValue"_s, u"settings.yield"_s, u"files.remove"_s, u"launcher.start"_s}));
    order.remove(u"HKCU \"Software\\\\Verdanis\\\\Orvant Manager\" "_s).remove(desktop.folders.program);
    EXPECT_EQ("settings.value \"NoUpdate\"\n"
              "files.remove \"/Updates/Setup.exe\"\n"
              "settings.value \"Update\"\n"
              "settings.setValue \"Update\" sz \"20.11.2026\"\n"
              "launcher.start program command \"/Netzpflege.exe /a\" target \"/Netzpflege.exe\" argument \"/a\"\n"
              "settings.yield",
              order.toStdString());
}

TEST_F(Updates, WithoutTheSiblingTheDateIsWrittenAndNoTimerRuns)
{
    DesktopTest::start();
    EXPECT_EQ("", started());
    EXPECT_EQ("sz \"20.11.2026\"", setting(u"Update"_s).toStdString());
    EXPECT_FALSE(root().Timer3.Enabled.value());
    // Nor with one that cannot be started.
    put(program(u"Netzpflege.exe"_s), "x");
    setting(u"Update"_s, stringSetting(u"01.01.2026"_s));
    desktop.log.failNext(u"launcher.start"_s);
    check();
    EXPECT_FALSE(root().Timer3.Enabled.value());
}

TEST_F(Updates, ByHandTheProgramIsStartedOrElseTheLibraryAndTheDateIsNoted)
{
    setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
    put(program(u"Netzpflege.dll"_s), "x");
    DesktopTest::start();
    (void)boxes();
    forgetCalls();
    desktop.messages.answer(Answer::Ok);
    ASSERT_TRUE(root().mnuUpdates.press());
    EXPECT_EQ("box title \" Internet Updates\" text \"Für eine Aktualisierung muss ''Orvanten Manager'' beendet "
              "werden.  \" icon exclamation buttons ok-cancel answer ok",
              boxes());
    EXPECT_EQ(start(u"Netzpflege.dll"_s), started());
    EXPECT_EQ("20.11.2026", stored());

    put(program(u"Netzpflege.exe"_s), "x");
    forgetCalls();
    desktop.messages.answer(Answer::Ok);
    ASSERT_TRUE(root().mnuUpdates.press());
    EXPECT_EQ(start(u"Netzpflege.exe"_s), started());

    forgetCalls();
    desktop.messages.answer(Answer::Cancel);
    ASSERT_TRUE(root().mnuUpdates.press());
    EXPECT_EQ("", started());
}

TEST_F(Updates, ByHandWithoutASiblingNothingIsStartedNorNoted)
{
    setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
    DesktopTest::start();
    forgetCalls();
    desktop.messages.answer(Answer::Ok);
    ASSERT_TRUE(root().mnuUpdates.press());
    EXPECT_EQ("", started());
    EXPECT_EQ("", stored());
    EXPECT_EQ("Kein Update-Programm vorhanden. Neue Versionen kommen mit der Paketverwaltung.",
              root().quietLine.Caption.value().toStdString());
}

} // namespace orvantine::fake
