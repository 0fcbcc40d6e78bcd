#pragma once

#include "catalogue/CatalogueWorld.h"

#include "app/IniFiles.h"

#include <functional>

namespace orvantine::fake {

/// "Liste" with the tracks c, a, B in this order, and "Andere" with two tracks. "Liste" is open and selected.
class TrackListOperations : public CatalogueWorld
{
protected:
    void open(const QStringList& tracks = {QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("B")})
    {
        setting(QStringLiteral("Error"), dwordSetting(0));
        QStringList paths;
        for (const QString& track : tracks)
            paths += putTrack(track);
        const QString other = putList(QStringLiteral("Andere"),
                                      {putTrack(QStringLiteral("Andere 1")), putTrack(QStringLiteral("Andere 2"))});
        const QString count = QString::number(tracks.size());
        putDatabase(indexRow(1, {.name = QStringLiteral("Liste"),
                                 .path = putList(QStringLiteral("Liste"), paths),
                                 .tracks = count}) +
                        indexRow(2, {.name = QStringLiteral("Andere"), .path = other}),
                    "[TagInfo]\r\n" + databaseNames);
        start();
        click(1);
        desktop.messages.take();
        forgetCalls();
    }

    /// Names of the tracks, the selected one with a star.
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += (row == tracks().selectedRow() ? QStringLiteral("*") : QString()) + tracks().subItem(row, 2);
        return texts.join(u' ').toStdString();
    }
    [[nodiscard]] std::string column(int sub)
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += sub == 0 ? tracks().text(row) : tracks().subItem(row, sub);
        return texts.join(u' ').toStdString();
    }
    [[nodiscard]] std::string file(const QString& list = QStringLiteral("Liste"))
    {
        return bytes(listPath(list)).toStdString();
    }

    void answerSort(Answer answer)
    {
        desktop.messages.answer(answer, QStringLiteral(" Orvanten Manager"),
                                QStringLiteral("Soll die geänderte Trackliste automatisch gespeichert werden ? "));
    }
    void answerRemove(Answer answer)
    {
        desktop.messages.answer(answer, QStringLiteral(" Dateien entfernen"),
                                QStringLiteral("Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "));
    }
    /// The user does something inside the reading that follows the removal of row 3.
    void removeLastWhileTheReload(const std::function<void()>& does)
    {
        tracks().select(3);
        answerRemove(Answer::Ok);
        const QMetaObject::Connection watch = QObject::connect(
            &tracks(), &QAbstractItemModel::modelReset, &tracks(),
            [&] { desktop.events().after(std::chrono::milliseconds{0}, does); }, Qt::SingleShotConnection);
        root().mnuFileKill.Click();
    }
    /// The click finds "Andere" missing, and the user leaves it at that: the tracks of "Liste" stay in sight.
    void clickMissing()
    {
        desktop.disk().remove(listPath(QStringLiteral("Andere")));
        answerMissing();
        click(2);
    }
    void answerMissing()
    {
        desktop.messages.answer(Answer::Cancel, QStringLiteral(" Andere"),
                                QStringLiteral("Die folgende Wiedergabeliste ist nicht vorhanden: \n") +
                                    listPath(QStringLiteral("Andere")));
    }
    /// "Andere" has been emptied: it shows the first track of "Liste".
    void clickEmptied()
    {
        put(listPath(QStringLiteral("Andere")), "\r\n");
        click(2);
        ASSERT_EQ("/m/c.mp3", column(3));
    }
    [[nodiscard]] std::string nameOf(const QString& track)
    {
        return IniFiles::ReadValue(root(), database(), QStringLiteral("TagInfo"), track).toStdString();
    }
    void enterName(const QString& name)
    {
        desktop.messages.script({.answer = Answer::Ok,
                                 .entered = name,
                                 .title = QStringLiteral(" Wiedergabeliste umbenennen"),
                                 .text = QStringLiteral("Geben Sie einen neuen Namen für die Playliste ein:"),
                                 .meanwhile = {}});
    }
    [[nodiscard]] bool outOfWait()
    {
        return root().Pointer.value() == MousePointer::Default && catalogue().Enabled.value() &&
               tracks().Enabled.value() && !root().buttonsDisabled;
    }
    [[nodiscard]] QString picture(const QString& name) const { return data() + QStringLiteral("Resource/") + name; }

    QByteArray databaseNames;
};

} // namespace orvantine::fake
