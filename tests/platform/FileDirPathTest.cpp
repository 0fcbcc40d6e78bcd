#include "platform/FileDirPath.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

TEST(FileDirPath, FolderOfKeepsTheBackslash)
{
    EXPECT_EQ("C:\\a\\", FileDirPath::FolderOf(u"C:\\a\\b.mp3"_s).toStdString());
    EXPECT_EQ("/a/", FileDirPath::FolderOf(u"/a/b.mp3"_s).toStdString());
    EXPECT_EQ("", FileDirPath::FolderOf(u"b.mp3"_s).toStdString());
}

TEST(FileDirPath, FileNameOfATextWithoutASeparatorIsTheText)
{
    EXPECT_EQ("b.mp3", FileDirPath::FileNameOf(u"b.mp3"_s).toStdString());
    EXPECT_EQ("c.mp3", FileDirPath::FileNameOf(u"C:\\a/b\\c.mp3"_s).toStdString());
    EXPECT_EQ("", FileDirPath::FileNameOf(u"C:\\a\\"_s).toStdString());
}

TEST(FileDirPath, APathTakesTheSeparatorOfItsBase)
{
    EXPECT_EQ("C:\\D\\x", FileDirPath::join(u"C:\\D"_s, u"x").toStdString());
    EXPECT_EQ("/d/x", FileDirPath::join(u"/d/"_s, u"x").toStdString());
    EXPECT_EQ("d/x", FileDirPath::join(u"d"_s, u"x").toStdString());
}

TEST(FileDirPath, ATitleIsTheFileNameLessFourCharacters)
{
    EXPECT_EQ("Lied", FileDirPath::titleOf(u"C:\\a\\Lied.mp3"_s).toStdString());
    EXPECT_EQ("Lied.", FileDirPath::titleOf(u"/a/Lied.flac"_s).toStdString());
    EXPECT_EQ("", FileDirPath::titleOf(u"/a/b"_s).toStdString());
}

TEST(FileDirPath, ASeparatorOrADriveAtTheBeginningMakesAPathAbsolute)
{
    for (const QStringView path : {u"/a", u"\\a", u"\\\\server\\a", u"C:\\a", u"c:/a"})
        EXPECT_TRUE(FileDirPath::isAbsolute(path)) << path.toString().toStdString();
    for (const QStringView path : {u"", u"a", u"a/b", u"C:", u"C:a", u"1:/a"})
        EXPECT_FALSE(FileDirPath::isAbsolute(path)) << path.toString().toStdString();
}

TEST(FileDirPath, ANameThatSomeDesktopRefusesIsNone)
{
    EXPECT_TRUE(FileDirPath::canBeFileName(u"Fünf, 'sechs' & [7]"));
    const QString all = u"/\\:*?\"<>|"_s + QChar(u'\t') + QChar(u'\x1f');
    for (const QChar refused : all)
        EXPECT_FALSE(FileDirPath::canBeFileName(QString(u"a"_s + refused))) << int{refused.unicode()};
}

} // namespace orvantine
