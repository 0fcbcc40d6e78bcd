#pragma once

#include "catalogue/CatalogueWorld.h"

#include "app/IniFiles.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"
#include "operations/Positionen.h"
#include "operations/mnuVerschiebung.h"

#include <functional>

namespace orvantine::fake {

class Reordering : public CatalogueWorld
{
protected:
    void startWith(int row)
    {
        QByteArray index;
        const QStringList names{QStringLiteral("Eins"), QStringLiteral("Zwei"), QStringLiteral("Drei")};
        for (int number = 1; number <= 3; ++number) {
            const QString& name = names[number - 1];
            const QString path =
                putList(name, {putTrack(name + QStringLiteral(" 1")), putTrack(name + QStringLiteral(" 2"))});
            index += indexRow(number, {.name = name,
                                       .path = path,
                                       .tracks = QStringLiteral("2"),
                                       .description = QStringLiteral("Text ") + name,
                                       .date = QStringLiteral("0%1.01.2001").arg(number),
                                       .favourite = number == 2 ? QStringLiteral("1") : QString()});
        }
        putDatabase(index);
        setting(QStringLiteral("CheckEntrys"), dwordSetting(1));
        start();
        click(row);
        forgetCalls();
    }

    /// The keys of a number, "(none)" for none, with the folder of the lists left out.
    [[nodiscard]] std::string keys(int number, const QString& file = {})
    {
        QString text;
        for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'}) {
            const QString key = QString::number(number) + QLatin1Char(letter);
            const bool there = desktop.profiles()
                                   .keys(file.isEmpty() ? database() : file, QStringLiteral("Index"))
                                   .contains(key, Qt::CaseInsensitive);
            text += there
                        ? IniFiles::ReadValue(root(), file.isEmpty() ? database() : file, QStringLiteral("Index"), key)
                        : QStringLiteral("-");
            text += u'|';
        }
        return text.remove(data() + QStringLiteral("Playlisten/")).toStdString();
    }

    [[nodiscard]] std::string key(int number, char letter)
    {
        return indexValue(root(), database(), number, letter).toStdString();
    }

    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= catalogue().count(); ++row)
            texts += (row == catalogue().selectedRow() ? QStringLiteral("*") : QString()) + catalogue().subItem(row, 1);
        return texts.join(u' ').toStdString();
    }

    /// Loads the catalogue without the question about doubles.
    void reload()
    {
        setting(QStringLiteral("CheckEntrys"), dwordSetting(0));
        mnuLaden_Click(root());
    }

    [[nodiscard]] std::string sounds() { return calls({QStringLiteral("cue")}); }

    Positionen& form() { return *root().positionen; }
    void openDialog(const std::function<void()>& script)
    {
        desktop.forms().whileModal(QStringLiteral("Positionen"), [script](Form&) { script(); });
        root().mnuVerschiebung[4].Click();
    }
    void confirm()
    {
        desktop.messages.answer(
            Answer::Ok, QStringLiteral(" Orvanten Manager"),
            QStringLiteral("Es wurde eine Datensicherungsdatei unter ''Orvanten.bak'' erstellt.   "));
        form().BReady.Click();
    }
};

} // namespace orvantine::fake
