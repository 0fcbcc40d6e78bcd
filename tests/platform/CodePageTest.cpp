#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

TEST(CodePage, ValidUtf8IsTakenAsUtf8)
{
    EXPECT_EQ(CodePage().decode("K\xc3\xb6ln"), u"Köln"_s);
    EXPECT_EQ(CodePage().decode("\xf0\x9d\x84\x9e"), u"𝄞"_s);
    EXPECT_EQ(CodePage(CodePage::Windows1252).decode("K\xc3\xb6ln"), u"Köln"_s);
    EXPECT_EQ(CodePage().decode(""), QString());
}

TEST(CodePage, ABomIsDropped)
{
    EXPECT_EQ(CodePage().decode("\xef\xbb\xbf#EXTM3U"), u"#EXTM3U"_s);
    EXPECT_EQ(CodePage().decode("\xef\xbb\xbf"), QString());
}

TEST(CodePage, AnythingElseIsWindows1252)
{
    EXPECT_EQ(CodePage().decode("K\xf6ln \x80 \x84x\x93"), u"Köln € „x“"_s);
    EXPECT_EQ(CodePage().decode("\xc3"), u"Ã"_s);
    EXPECT_EQ(CodePage().decode("\xed\xa0\x80"), u"í\u00a0€"_s); // a surrogate is no valid UTF-8
}

TEST(CodePage, OneOldLineDoesNotSpoilTheOthers)
{
    EXPECT_EQ(CodePage().decode("K\xc3\xb6ln\r\nM\xfcller\nSm\xc3\xb8r"), u"Köln\r\nMüller\nSmør"_s);
    EXPECT_EQ(CodePage().decode("\xef\xbb\xbf\xc3\xb6\r\xf6"), u"ö\rö"_s);
    EXPECT_EQ(CodePage().decode("\xf6\n\n\r\n\xc3\n"), u"ö\n\n\r\nÃ\n"_s);
}

TEST(CodePage, EveryByteSurvivesAsWindows1252)
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    const QString text = CodePage().decode(all);
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(CodePage(CodePage::Windows1252).encode(text), all);
}

TEST(CodePage, NulIsACharacterLikeAnyOther)
{
    const QByteArray bytes("a\0b", 3);
    EXPECT_EQ(CodePage().decode(bytes).size(), 3);
    EXPECT_EQ(CodePage().encode(CodePage().decode(bytes)), bytes);
}

TEST(CodePage, WritesUtf8WithoutABom)
{
    EXPECT_EQ(CodePage().encode(u"Köln 𝄞"_s), "K\xc3\xb6ln \xf0\x9d\x84\x9e");
}

TEST(CodePage, WhatDoesNotFitIntoWindows1252BecomesAQuestionMark)
{
    EXPECT_EQ(CodePage(CodePage::Windows1252).encode(u"Köln Ω 𝄞 €"_s), "K\xf6ln ? ? \x80");
}

} // namespace
} // namespace orvantine
