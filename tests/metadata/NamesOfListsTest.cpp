#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Eins" and "Zwei" with two tagged tracks each; "Eins" is open.
class NamesOfLists : public CatalogueWorld
{
protected:
    void open()
    {
        for (const QString& list : {u"Eins"_s, u"Zwei"_s})
            for (const QString& number : {u" 1"_s, u" 2"_s})
                desktop.tags.tracks[u"/m/"_s + list + number + u".mp3"_s] = {.title = list + number,
                                                                             .artist = u"Wir"_s};
        putCatalogue({u"Eins"_s, u"Zwei"_s});
        start();
        click(1);
    }
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += tracks().subItem(row, 2);
        return texts.join(u'|').toStdString();
    }
};

} // namespace

TEST_F(NamesOfLists, AListThatIsOpenedWhileAnotherOneIsNamedKeepsItsNames)
{
    for (const bool bySaving : {false, true}) {
        bool clicked = true;
        for (int yield = 1; clicked; ++yield) {
            SCOPED_TRACE((bySaving ? "by saving, yield " : "yield ") + std::to_string(yield));
            ASSERT_LT(yield, 100);
            desktop.newProcess();
            setting(u"AutoTag"_s, dwordSetting(bySaving ? 1 : 0));
            open();
            clicked = false;
            desktop.events().atYield(yield, [&] {
                clicked = true;
                click(2);
            });
            (bySaving ? root().mnuSpeichern : root().mnuSetTagName).Click();
            // In its first yield a save has not come to the names: they are those of the list that is open then.
            const QString list = clicked ? u"Zwei"_s : u"Eins"_s;
            const bool named = !clicked || (bySaving && yield == 1);
            EXPECT_EQ((named ? u"Wir - %1 1|Wir - %1 2"_s : u"%1 1|%1 2"_s).arg(list).toStdString(), names());
            const QStringList keys = desktop.profiles().keys(database(), u"TagInfo"_s);
            for (const QString& number : {u" 1"_s, u" 2"_s})
                EXPECT_EQ(bySaving && yield == 1, keys.contains(u"/m/Zwei"_s + number + u".mp3"_s));
            EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3", bytes(listPath(u"Zwei"_s)).trimmed().toStdString());
            EXPECT_EQ("", root().mnuSpeichern.Tag.toStdString());
        }
    }
}

} // namespace orvantine::fake
