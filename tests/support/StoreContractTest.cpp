#include "TempWorld.h"
#include "desktop/posix/RegSettings.h"
#include "support/FakeVersions.h"
#include "support/LoggingFiles.h"
#include "support/MemoryFiles.h"
#include "support/MemorySettings.h"

#include <QTemporaryDir>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

// Files: what the real disk does, the one in memory and the one behind the log do too.

class MemoryWorld : public FilesWorld
{
public:
    MemoryWorld() { m_files.putFolder(folder()); }
    [[nodiscard]] Files& files() override { return m_files; }
    [[nodiscard]] QString folder() const override { return u"/home/anna"_s; }
    [[nodiscard]] QByteArrayList kept() const override { return m_files.recovered(); }
    [[nodiscard]] const EarlierVersions& versions() const override { return m_versions; }
    void breakStore() override { m_files.breakStore(); }

private:
    MemoryFiles m_files;
    FakeVersions m_versions{m_files};
};

class LoggedWorld : public FilesWorld
{
public:
    [[nodiscard]] Files& files() override { return m_files; }
    [[nodiscard]] QString folder() const override { return m_disk.folder(); }
    [[nodiscard]] QByteArrayList kept() const override { return m_disk.kept(); }
    [[nodiscard]] const EarlierVersions& versions() const override { return m_disk.versions(); }
    void breakStore() override { m_disk.breakStore(); }

private:
    TempWorld m_disk;
    CallLog m_log;
    LoggingFiles m_files{m_disk.files(), m_log};
};

// Settings

struct SettingsWorld
{
    QTemporaryDir folder;
    CallLog log;
    std::unique_ptr<SettingsStore> store;
};

struct SettingsFactory
{
    const char* name = "";
    std::function<void(SettingsWorld&)> make;
};

void PrintTo(const SettingsFactory& factory, std::ostream* out)
{
    *out << factory.name;
}

class SettingsContract : public testing::TestWithParam<SettingsFactory>
{
public:
    static std::string nameOf(const testing::TestParamInfo<SettingsFactory>& info) { return info.param.name; }

protected:
    SettingsContract() { GetParam().make(m_world); }

    SettingsStore& store() { return *m_world.store; }
    QString valueOf(const QString& name)
    {
        const std::optional<SettingValue> value = store().value(Hive::CurrentUser, key, name);
        return value ? described(*value) : u"(absent)"_s;
    }
    bool set(const QString& name, const SettingValue& value)
    {
        return store().setValue(Hive::CurrentUser, key, name, value);
    }

    const QString key = u"Software\\Verdanis\\Orvant Manager"_s;

private:
    SettingsWorld m_world;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Memory, FilesContract,
                         testing::Values(FilesFactory{
                             "Memory", [] { return std::unique_ptr<FilesWorld>(std::make_unique<MemoryWorld>()); }}),
                         FilesContract::nameOf);

INSTANTIATE_TEST_SUITE_P(Logged, FilesContract,
                         testing::Values(FilesFactory{
                             "Logged", [] { return std::unique_ptr<FilesWorld>(std::make_unique<LoggedWorld>()); }}),
                         FilesContract::nameOf);

INSTANTIATE_TEST_SUITE_P(Stores, SettingsContract,
                         testing::Values(SettingsFactory{"Memory",
                                                         [](SettingsWorld& world) {
                                                             world.store = std::make_unique<MemorySettings>(world.log);
                                                         }},
                                         SettingsFactory{"Reg",
                                                         [](SettingsWorld& world) {
                                                             RegSettingsOptions options;
                                                             options.file = world.folder.path() + u"/Orvantine.reg"_s;
                                                             world.store = std::make_unique<RegSettings>(options);
                                                         }}),
                         SettingsContract::nameOf);

TEST_P(SettingsContract, AValueNeedsItsKey)
{
    EXPECT_FALSE(store().keyExists(Hive::CurrentUser, key));
    EXPECT_FALSE(set(u"Version"_s, stringSetting(u"2.3"_s)));
    EXPECT_EQ(valueOf(u"Version"_s), u"(absent)"_s);
}

TEST_P(SettingsContract, AKeyIsNewOnceAndItsParentsComeWithIt)
{
    EXPECT_TRUE(store().createKey(Hive::CurrentUser, key));
    EXPECT_FALSE(store().createKey(Hive::CurrentUser, key));
    EXPECT_FALSE(store().createKey(Hive::CurrentUser, u"SOFTWARE\\Verdanis"_s));
    EXPECT_TRUE(store().keyExists(Hive::CurrentUser, u"software\\verdanis"_s));
}

TEST_P(SettingsContract, KeysAndNamesAreFoundIgnoringCase)
{
    store().createKey(Hive::CurrentUser, key);
    EXPECT_TRUE(set(u"Überschrift"_s, stringSetting(u"a"_s)));
    EXPECT_TRUE(store().setValue(Hive::CurrentUser, key.toUpper(), u"überSCHRIFT"_s, stringSetting(u"b"_s)));
    EXPECT_EQ(valueOf(u"ÜBERSCHRIFT"_s), u"sz \"b\""_s);
    EXPECT_EQ(store().names(Hive::CurrentUser, key).size(), 1);
}

TEST_P(SettingsContract, EachTypeComesBackAsItWent)
{
    store().createKey(Hive::CurrentUser, key);
    const QString text = u"C:\\Musik\\\"a\" = ü;[x]"_s;
    EXPECT_TRUE(set(u"S"_s, stringSetting(text)));
    EXPECT_TRUE(set(u"Leer"_s, stringSetting({})));
    EXPECT_TRUE(set(u"D"_s, dwordSetting(-2)));
    EXPECT_TRUE(set(u"B"_s, binarySetting(258)));
    EXPECT_TRUE(set(u"M"_s, {SettingType::MultiString, u"eins\r\nzwei\r\n"_s, {}}));
    EXPECT_TRUE(set(u"E"_s, {SettingType::ExpandString, u"%TEMP%"_s, {}}));

    EXPECT_EQ(store().value(Hive::CurrentUser, key, u"S"_s), stringSetting(text));
    EXPECT_EQ(valueOf(u"Leer"_s), u"sz \"\""_s);
    EXPECT_EQ(valueOf(u"D"_s), u"dword -2"_s);
    EXPECT_EQ(valueOf(u"B"_s), u"binary 02 01 00 00"_s);
    EXPECT_EQ(valueOf(u"M"_s), u"multi-sz \"eins\\r\\nzwei\\r\\n\""_s);
    EXPECT_EQ(valueOf(u"E"_s), u"expand-sz \"%TEMP%\""_s);
    EXPECT_EQ(store().names(Hive::CurrentUser, key).join(u' '), u"S Leer D B M E"_s);
}

TEST_P(SettingsContract, AValueIsRemovedOnce)
{
    store().createKey(Hive::CurrentUser, key);
    set(u"A"_s, dwordSetting(1));
    EXPECT_TRUE(store().removeValue(Hive::CurrentUser, key, u"a"_s));
    EXPECT_FALSE(store().removeValue(Hive::CurrentUser, key, u"a"_s));
    EXPECT_EQ(valueOf(u"A"_s), u"(absent)"_s);
}

TEST_P(SettingsContract, TheMachinesHiveTakesNothing)
{
    EXPECT_FALSE(store().createKey(Hive::LocalMachine, key));
    EXPECT_FALSE(store().keyExists(Hive::LocalMachine, key));
    store().createKey(Hive::CurrentUser, key);
    EXPECT_FALSE(store().setValue(Hive::LocalMachine, key, u"A"_s, dwordSetting(1)));
    EXPECT_FALSE(store().value(Hive::LocalMachine, key, u"A"_s));
}

} // namespace orvantine::fake
