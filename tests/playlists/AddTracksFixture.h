#pragma once

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

/// Two lists: "Liste" with two tracks, open, and "Leer" without any.
class AddTracks : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        setting(QStringLiteral("Error"), dwordSetting(0));
        setting(QStringLiteral("Lokal"), dwordSetting(0));
        list = putList(QStringLiteral("Liste"), {putTrack(QStringLiteral("a")), putTrack(QStringLiteral("b"))});
        empty = listPath(QStringLiteral("Leer"));
        put(empty, "");
        putDatabase(indexRow(1, {.name = QStringLiteral("Liste"), .path = list}) +
                    indexRow(2, {.name = QStringLiteral("Leer"), .path = empty, .tracks = QStringLiteral("0")}) +
                    indexRow(3, {.name = QStringLiteral("Letzte"), .path = empty, .tracks = QStringLiteral("0")}));
        start();
        click(1);
        ASSERT_EQ(2, tracks().count());
        forgetCalls();
    }

    /// Number, track, name, path and file of each row.
    [[nodiscard]] std::string shown()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += QStringLiteral("%1 %2 %3 <%4> <%5>%6")
                       .arg(tracks().text(row), tracks().subItem(row, 1), tracks().subItem(row, 2),
                            tracks().subItem(row, 3), tracks().subItem(row, 4),
                            tracks().color(row, 3) == Color::DarkRed ? QStringLiteral(" red") : QString());
        return withoutFolder(lines(all).c_str());
    }

    QString list;
    QString empty;
};

} // namespace orvantine::fake
