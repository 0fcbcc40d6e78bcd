#include "shell/Tastatur.h"
#include "shell/Menus.h"

#include "catalogue/CatalogueWorld.h"

#include <QMap>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// A key of the lists, as the table writes it.
struct ListKey
{
    QString text;
    int shift;
    int code;
    bool inCatalogue;
};

class KeyTable : public CatalogueWorld
{
protected:
    KeyTable()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        putCatalogue({u"Erste"_s, u"Zweite"_s});
        start();
        click(1);
        tracks().select(2);
    }

    /// The keys of the menu bar that do something, and what their commands are called there.
    [[nodiscard]] QMap<QString, QString> menuKeys()
    {
        QMap<QString, QString> keys;
        for (const MenuEntry& entry : menuBar(root())) {
            QString key = entry.item->Shortcut;
            if (!key.isEmpty() && entry.item->Click)
                keys.insert(key.replace(u"Ctrl+"_s, u"Strg + "_s),
                            QString(entry.item->Caption.value()).remove(u'&').remove(u"..."_s).trimmed());
        }
        return keys;
    }
    /// The lines of the keys that this desktop adds, one for each key.
    [[nodiscard]] QMap<QString, QString> toldKeys()
    {
        QMap<QString, QString> keys;
        for (const QString& line : root().tastatur->LMoreKeys.List.value()) {
            const QStringList names = line.section(u'\t', 0, 0).split(u", "_s);
            const QStringList texts = line.section(u'\t', 1).split(u", "_s);
            EXPECT_EQ(names.size(), texts.size()) << line.toStdString();
            for (qsizetype i = 0; i < names.size(); ++i)
                keys.insert(names[i], texts.value(i));
        }
        return keys;
    }
};

} // namespace

TEST_F(KeyTable, EachKeyOfTheMenusStandsInItByTheNameOfItsCommand)
{
    const QMap<QString, QString> told = toldKeys();
    const QMap<QString, QString> menus = menuKeys();
    EXPECT_GT(menus.size(), 9);
    for (auto key = menus.cbegin(); key != menus.cend(); ++key)
        EXPECT_EQ(key.value().toStdString(), told.value(key.key()).toStdString()) << key.key().toStdString();
}

TEST_F(KeyTable, WhatStandsInItIsAKeyOfAMenuOfTheListsOrOfTheWindow)
{
    // Those of the window are pressed in the tests of its widgets.
    const QStringList ofWindow{u"F2"_s, u"F10"_s, u"Menütaste"_s, u"Entf (auf dem Cover)"_s};
    const std::vector<ListKey> ofLists{
        {u"Enter"_s, 0, 13, true}, {u"Alt + 0 (Ziffernblock)"_s, 4, 96, true}, {u"Umschalt + <"_s, 1, 226, false}};
    QStringList left = toldKeys().keys();
    for (const QString& key : menuKeys().keys() + ofWindow)
        EXPECT_TRUE(left.removeOne(key)) << key.toStdString();
    for (const ListKey& key : ofLists) {
        EXPECT_TRUE(left.removeOne(key.text)) << key.text.toStdString();
        EXPECT_EQ(key.inCatalogue, catalogue().KeyDown(key.shift, key.code)) << key.text.toStdString();
        EXPECT_TRUE(tracks().KeyDown(key.shift, key.code)) << key.text.toStdString();
    }
    EXPECT_EQ("Alt + Q", left.join(u'|').toStdString());
    EXPECT_TRUE(tracks().KeyDown(4, 81));
    EXPECT_TRUE(desktop.events().ended());
}

} // namespace orvantine::fake
