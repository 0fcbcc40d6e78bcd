#include "desktop/posix/RegSettings.h"
#include "desktop/posix/RegText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString SettingsKey = u"Software\\Verdanis\\Orvant Manager"_s;
const QString CurrentVersion = u"Software\\Microsoft\\Windows\\CurrentVersion"_s;
const QString RunKey = CurrentVersion + u"\\Run"_s;

SettingValue text(const QString& value)
{
    return {SettingType::String, value, {}};
}
SettingValue dword(const QByteArray& bytes)
{
    return {SettingType::Dword, {}, bytes};
}
SettingValue binary(const QByteArray& bytes)
{
    return {SettingType::Binary, {}, bytes};
}
SettingValue lines(const QString& value)
{
    return {SettingType::MultiString, value, {}};
}

class RegSettingsTest : public testing::Test
{
protected:
    [[nodiscard]] RegSettingsOptions options() const
    {
        RegSettingsOptions result;
        result.file = m_file;
        result.autostartFolder = m_folder.path() + u"/autostart"_s;
        result.program = u"/usr/lib/orvanten manager/Orvantine"_s;
        result.shellFolders = {{u"My Music"_s, u"/home/ö/Musik"_s}, {u"Personal"_s, u"/home/ö/Dokumente"_s}};
        return result;
    }
    void put(const QByteArray& bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(m_folder.path() + u"/config"_s));
        QFile file(m_file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray bytes(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    bool set(const QString& name, const SettingValue& value)
    {
        return m_settings.setValue(Hive::CurrentUser, SettingsKey, name, value);
    }
    [[nodiscard]] std::optional<SettingValue> get(const QString& name) const
    {
        return m_settings.value(Hive::CurrentUser, SettingsKey, name);
    }

    QTemporaryDir m_folder;
    QString m_file = m_folder.path() + u"/config/Orvantine.reg"_s;
    RegSettings m_settings{options()};
};

TEST_F(RegSettingsTest, AKeyIsNewOnceAndReachesItsParents)
{
    EXPECT_FALSE(m_settings.keyExists(Hive::CurrentUser, SettingsKey));
    EXPECT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_FALSE(m_settings.createKey(Hive::CurrentUser, SettingsKey.toUpper()));
    EXPECT_TRUE(m_settings.keyExists(Hive::CurrentUser, u"software\\verdanis\\orvant manager\\"_s));
    EXPECT_TRUE(m_settings.keyExists(Hive::CurrentUser, u"Software\\Verdanis"_s));
    EXPECT_FALSE(m_settings.keyExists(Hive::CurrentUser, u"Software\\Verd"_s));
    EXPECT_EQ(bytes(m_file), "Windows Registry Editor Version 5.00\r\n\r\n"
                             "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n");
}

TEST_F(RegSettingsTest, WithoutItsKeyAValueIsNotStored)
{
    EXPECT_FALSE(set(u"Version"_s, text(u"2.3"_s)));
    EXPECT_EQ(bytes(m_file), "<missing>");
}

TEST_F(RegSettingsTest, EveryTypeStandsInTheFileAtOnce)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_TRUE(set(u"Database"_s, text(u"C:\\Daten \"neu\"\\Ö\\"_s)));
    EXPECT_TRUE(set(u"Error"_s, dword(QByteArray("\x01\0\0\0", 4))));
    EXPECT_TRUE(set(u"Index"_s, binary(QByteArray("\x9f\0\0\x80", 4))));
    EXPECT_TRUE(set(u"Mehr"_s, lines(u"a\r\nb\r\n"_s)));
    EXPECT_TRUE(set(u""_s, text(u""_s)));
    EXPECT_EQ(bytes(m_file), "Windows Registry Editor Version 5.00\r\n\r\n"
                             "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n"
                             "\"Database\"=\"C:\\\\Daten \\\"neu\\\"\\\\\xc3\x96\\\\\"\r\n"
                             "\"Error\"=dword:00000001\r\n"
                             "\"Index\"=hex:9f,00,00,80\r\n"
                             "\"Mehr\"=hex(7):61,00,0d,00,0a,00,62,00,0d,00,0a,00,00,00,00,00\r\n"
                             "@=\"\"\r\n");
}

TEST_F(RegSettingsTest, EveryValueComesBackAfterARestart)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    const std::vector<std::pair<QString, SettingValue>> values = {
        {u"Text"_s, text(u"Größe = 1, [x] ; y\\"_s)},
        {u"Leer"_s, text(u""_s)},
        {u"Zeilen"_s, text(u"a\nb\tc"_s)},
        {u"Name \"mit\\ =]"_s, text(u"  blanks  "_s)},
        {u"Zahl"_s, dword(QByteArray("\xff\xff\xff\xff", 4))},
        {u"Binär"_s, binary(QByteArray("\0\x01\xfe", 3))},
        {u"Nichts"_s, binary(QByteArray())},
        {u"Liste"_s, lines(u"Eins\r\nZwei ä\r\n"_s)},
        {u"Erweitert"_s, {SettingType::ExpandString, u"%HOME%\\x"_s, {}}},
        {u"Ohne Typ"_s, {SettingType::None, {}, "\x07"}},
        {u"Andere"_s, {static_cast<SettingType>(11), {}, "12345678"}},
    };
    for (const auto& [name, value] : values)
        ASSERT_TRUE(set(name, value)) << name.toStdString();
    const RegSettings fresh(options());
    QStringList names;
    for (const auto& [name, value] : values) {
        EXPECT_EQ(fresh.value(Hive::CurrentUser, SettingsKey, name.toUpper()), value) << name.toStdString();
        names += name;
    }
    EXPECT_EQ(fresh.names(Hive::CurrentUser, SettingsKey), names);
}

TEST_F(RegSettingsTest, AnEqualValueIsNotWritten)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    ASSERT_TRUE(set(u"Info"_s, text(u"1"_s)));
    struct stat before = {};
    struct stat after = {};
    ASSERT_EQ(::stat(m_file.toUtf8().constData(), &before), 0);
    EXPECT_TRUE(set(u"INFO"_s, text(u"1"_s)));
    ASSERT_EQ(::stat(m_file.toUtf8().constData(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

TEST_F(RegSettingsTest, ARemovedValueIsGone)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    ASSERT_TRUE(set(u"Info"_s, text(u"1"_s)));
    EXPECT_TRUE(m_settings.removeValue(Hive::CurrentUser, SettingsKey, u"info"_s));
    EXPECT_FALSE(m_settings.removeValue(Hive::CurrentUser, SettingsKey, u"info"_s));
    EXPECT_EQ(get(u"Info"_s), std::nullopt);
    EXPECT_TRUE(m_settings.keyExists(Hive::CurrentUser, SettingsKey));
}

TEST_F(RegSettingsTest, ANameThatALineCannotHoldIsNotStored)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_FALSE(set(u"a\nb"_s, text(u"1"_s)));
    EXPECT_FALSE(m_settings.createKey(Hive::CurrentUser, u"Software\\a\r\n[HKEY_CURRENT_USER\\b"_s));
    EXPECT_EQ(m_settings.names(Hive::CurrentUser, SettingsKey), QStringList());
}

TEST_F(RegSettingsTest, TheMachineWideHiveIsEmptyAndTakesNothing)
{
    EXPECT_FALSE(m_settings.keyExists(Hive::LocalMachine, u"Software"_s));
    EXPECT_FALSE(m_settings.createKey(Hive::LocalMachine, u"Software\\x"_s));
    EXPECT_FALSE(m_settings.setValue(Hive::LocalMachine, CurrentVersion, u"a"_s, text(u"1"_s)));
    EXPECT_EQ(m_settings.value(Hive::LocalMachine, CurrentVersion, u"ProgramFilesDir"_s), std::nullopt);
    EXPECT_EQ(m_settings.value(Hive::CurrentUser, CurrentVersion, u"ProgramFilesDir"_s), std::nullopt);
    EXPECT_FALSE(m_settings.removeValue(Hive::LocalMachine, CurrentVersion, u"a"_s));
    EXPECT_EQ(m_settings.names(Hive::LocalMachine, CurrentVersion), QStringList());
}

TEST_F(RegSettingsTest, AnOutsideChangeIsSeenAndKept)
{
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    ASSERT_TRUE(set(u"Info"_s, text(u"1"_s)));
    RegSettings other(options());
    ASSERT_TRUE(other.setValue(Hive::CurrentUser, SettingsKey, u"Lokal"_s, text(u"2"_s)));
    EXPECT_EQ(get(u"Lokal"_s), text(u"2"_s));
    ASSERT_TRUE(set(u"Info"_s, text(u"3"_s)));
    EXPECT_EQ(other.value(Hive::CurrentUser, SettingsKey, u"Info"_s), text(u"3"_s));
    EXPECT_EQ(other.value(Hive::CurrentUser, SettingsKey, u"Lokal"_s), text(u"2"_s));
}

TEST_F(RegSettingsTest, ALinkToTheFileStaysALink)
{
    put("");
    ASSERT_TRUE(QFile::rename(m_file, m_folder.path() + u"/echt.reg"_s));
    ASSERT_TRUE(QFile::link(m_folder.path() + u"/echt.reg"_s, m_file));
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_TRUE(QFileInfo(m_file).isSymLink());
    EXPECT_TRUE(bytes(m_folder.path() + u"/echt.reg"_s).startsWith("Windows Registry"));
}

// Damage

TEST_F(RegSettingsTest, OfADamagedFileTheReadableLinesSurviveAndTheOldOneIsPutAside)
{
    const QByteArray damaged =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n"
        "\"Info\"=\"1\"\r\n\"Halb\"=\"offen\r\nMüll\r\n\"Zahl\"=dword:xyz\r\n\"Lokal\"=dword:00000001\r\n";
    put(damaged);
    EXPECT_EQ(get(u"Info"_s), text(u"1"_s));
    EXPECT_EQ(get(u"Halb"_s), std::nullopt);
    EXPECT_EQ(get(u"Zahl"_s), std::nullopt);
    EXPECT_EQ(get(u"Lokal"_s), dword(QByteArray("\x01\0\0\0", 4)));
    EXPECT_EQ(bytes(m_file), damaged);
    ASSERT_TRUE(set(u"Info"_s, text(u"2"_s)));
    EXPECT_EQ(bytes(m_file + u".beschädigt-1"_s), damaged);
    ASSERT_TRUE(set(u"Info"_s, text(u"3"_s)));
    EXPECT_EQ(bytes(m_file + u".beschädigt-2"_s), "<missing>");
    EXPECT_EQ(bytes(m_file), "Windows Registry Editor Version 5.00\r\n\r\n"
                             "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n"
                             "\"Info\"=\"3\"\r\n\"Lokal\"=dword:00000001\r\n");
    put("Müll");
    EXPECT_EQ(get(u"Info"_s), std::nullopt);
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_EQ(bytes(m_file + u".beschädigt-1"_s), damaged);
    EXPECT_EQ(bytes(m_file + u".beschädigt-2"_s), "Müll");
}

TEST_F(RegSettingsTest, ADamagedFileBehindALinkIsPutAsideItself)
{
    put("Müll");
    const QString real = m_file + u".echt"_s;
    ASSERT_TRUE(QFile::rename(m_file, real) && QFile::link(real, m_file));
    ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    const QString aside = m_file + u".beschädigt-1"_s;
    EXPECT_FALSE(QFileInfo(aside).isSymLink());
    EXPECT_EQ(bytes(aside), "Müll");
}

TEST_F(RegSettingsTest, BinaryRubbishAndHugeFilesAreSurvived)
{
    QByteArray rubbish;
    for (int i = 0; i < 100'000; ++i)
        rubbish += static_cast<char>((i % 40'000 * (i % 40'000)) >> 5);
    for (const QByteArray& content :
         {QByteArray(), QByteArray("\0\0\0", 3), rubbish, QByteArray(3'000'000, '['), QByteArray("\xff\xfe["),
          QByteArray("\"\\"), QByteArray("[HKEY_]\n\"=\n@=hex(")}) {
        put(content);
        EXPECT_EQ(get(u"Info"_s), std::nullopt);
        ASSERT_TRUE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
        EXPECT_TRUE(set(u"Info"_s, text(u"1"_s)));
        EXPECT_EQ(get(u"Info"_s), text(u"1"_s));
    }
}

TEST_F(RegSettingsTest, AFolderInThePlaceOfTheFileTakesNothing)
{
    ASSERT_TRUE(QDir().mkpath(m_file));
    EXPECT_EQ(get(u"Info"_s), std::nullopt);
    EXPECT_FALSE(m_settings.createKey(Hive::CurrentUser, SettingsKey));
    EXPECT_TRUE(QFileInfo(m_file).isDir());
}

TEST_F(RegSettingsTest, AnExportOfAnotherDesktopIsRead)
{
    const QString exported = u"\ufeffWindows Registry Editor Version 5.00\r\n\r\n"
                             "; von dort\r\n"
                             "[HKEY_CURRENT_USER\\Software\\Verdanis\\Orvant Manager]\r\n"
                             "\"Index\"=hex:01,00,\\\r\n  00,00\r\n"
                             "\"Pfad\"=\"C:\\\\ä,\\\\\"\r\n"
                             "\"Liste\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n"_s;
    put(QByteArray(reinterpret_cast<const char*>(exported.utf16()), exported.size() * 2));
    EXPECT_EQ(get(u"Index"_s), binary(QByteArray("\x01\0\0\0", 4)));
    EXPECT_EQ(get(u"Pfad"_s), text(u"C:\\ä,\\"_s));
    EXPECT_EQ(get(u"Liste"_s), lines(u"a\r\nb"_s));
    ASSERT_TRUE(set(u"Info"_s, text(u"1"_s)));
    EXPECT_EQ(bytes(m_file + u".beschädigt-1"_s), "<missing>");
}

// What is the desktop's

TEST_F(RegSettingsTest, TheRunValueIsTheAutostartEntry)
{
    const QString entry = m_folder.path() + u"/autostart/Orvantinen.desktop"_s;
    const QString command = u"/opt/Müsik 100%\\Orvantine.exe /hide"_s;
    EXPECT_TRUE(m_settings.keyExists(Hive::CurrentUser, RunKey));
    EXPECT_EQ(m_settings.value(Hive::CurrentUser, RunKey, u"Orvantinen"_s), std::nullopt);
    ASSERT_TRUE(m_settings.setValue(Hive::CurrentUser, RunKey, u"Orvantinen"_s, text(command)));
    EXPECT_EQ(bytes(entry), "[Desktop Entry]\nType=Application\nName=Orvanten Manager\n"
                            "Exec=\"/usr/lib/orvanten manager/Orvantine\" /hide\n"
                            "Terminal=false\nX-GNOME-Autostart-enabled=true\n"
                            "X-Orvantine-Command=/opt/M\xc3\xbcsik 100%\\\\Orvantine.exe /hide\n");
    EXPECT_EQ(m_settings.value(Hive::CurrentUser, RunKey, u"orvantinen"_s), text(command));
    EXPECT_EQ(m_settings.names(Hive::CurrentUser, RunKey), QStringList{u"Orvantinen"_s});
    EXPECT_TRUE(m_settings.removeValue(Hive::CurrentUser, RunKey, u"Orvantinen"_s));
    EXPECT_EQ(bytes(entry), "<missing>");
    EXPECT_FALSE(m_settings.removeValue(Hive::CurrentUser, RunKey, u"Orvantinen"_s));
    EXPECT_EQ(bytes(m_file), "<missing>");
}

TEST_F(RegSettingsTest, TheAutostartRunsTheProgramThatTheValueNames)
{
    QFile program(m_folder.path() + u"/Orv $1`\"%Ö"_s);
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.close();
    ASSERT_TRUE(m_settings.setValue(Hive::CurrentUser, RunKey, u"Orvantinen"_s,
                                    text(m_folder.path() + u"\\Orv $1`\"%Ö.exe /hide"_s)));
    const QByteArray entry = bytes(m_folder.path() + u"/autostart/Orvantinen.desktop"_s);
    EXPECT_TRUE(entry.contains("\nExec=\"" + m_folder.path().toUtf8() + "/Orv \\\\$1\\\\`\\\\\"%%\xc3\x96\" /hide\n"))
        << entry.toStdString();
}

TEST_F(RegSettingsTest, AnEntryThatTheDesktopSwitchedOffCountsAsAbsent)
{
    ASSERT_TRUE(m_settings.setValue(Hive::CurrentUser, RunKey, u"Orvantinen"_s, text(u"/x /hide"_s)));
    QFile entry(m_folder.path() + u"/autostart/Orvantinen.desktop"_s);
    ASSERT_TRUE(entry.open(QIODevice::Append));
    entry.write("Hidden=true\n");
    entry.close();
    EXPECT_EQ(m_settings.value(Hive::CurrentUser, RunKey, u"Orvantinen"_s), std::nullopt);
}

TEST_F(RegSettingsTest, TheShellFoldersAreTheUsersFolders)
{
    for (const QString& name : {u"Shell Folders"_s, u"User Shell Folders"_s}) {
        const QString key = CurrentVersion + u"\\Explorer\\"_s + name;
        EXPECT_TRUE(m_settings.keyExists(Hive::CurrentUser, key));
        EXPECT_EQ(m_settings.value(Hive::CurrentUser, key, u"my music"_s), text(u"/home/ö/Musik"_s));
        EXPECT_EQ(m_settings.value(Hive::CurrentUser, key, u"Personal"_s), text(u"/home/ö/Dokumente"_s));
        EXPECT_EQ(m_settings.value(Hive::CurrentUser, key, u"CD Burning"_s), std::nullopt);
        EXPECT_FALSE(m_settings.setValue(Hive::CurrentUser, key, u"CD Burning"_s, text(u"/x"_s)));
    }
}

} // namespace
} // namespace orvantine
