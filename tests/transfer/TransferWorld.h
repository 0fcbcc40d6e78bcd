#pragma once

#include "app/Columns.h"
#include "catalogue/CatalogueWorld.h"
#include "transfer/Kopieren.h"

namespace orvantine::fake {

/// A catalogue of "Rock" (two tracks) and "Pop" (two tracks), "Rock" open, and a stick.
class TransferWorld : public CatalogueWorld
{
protected:
    explicit TransferWorld(const DesktopOptions& options = {}) : CatalogueWorld(options) {}

    void SetUp() override
    {
        putFolder(Stick);
        desktop.volumes.set(Stick, {.fileSystem = QStringLiteral("EXT4"), .free = quint64{1} << 30, .total = 0});
        setting(QStringLiteral("Info"), stringSetting(QStringLiteral("1")));
        putCatalogue({QStringLiteral("Rock"), QStringLiteral("Pop")});
        start();
        click(1);
        forgetCalls();
        desktop.messages.take();
    }

    void setRoom(quint64 bytes, const QString& fileSystem = QStringLiteral("EXT4"))
    {
        desktop.volumes.set(Stick, {.fileSystem = fileSystem, .free = bytes, .total = 0});
    }
    void option(const QString& key, const QString& value)
    {
        desktop.profiles().setValue(database(), QStringLiteral("Options"), key, value);
    }
    [[nodiscard]] std::string option(const QString& key)
    {
        return desktop.profiles().value(database(), QStringLiteral("Options"), key).toStdString();
    }
    /// The target of today.
    void rememberStick()
    {
        option(QStringLiteral("CopyStick"), Stick + u'/');
        option(QStringLiteral("CopyDate"), QStringLiteral("20.11.2026"));
    }
    void answer(Answer answer) { desktop.messages.answer(answer); }
    void enter(const QString& text) { desktop.messages.enter(text); }
    /// Pack and Go into a folder, past the question for a burner, with the report at the end.
    void packIntoFolder(const QString& folder = Stick)
    {
        answer(Answer::No);
        answer(Answer::Cancel);
        desktop.choosers.chooseFolder(folder);
        answer(Answer::Ok);
        EXPECT_TRUE(root().mnuPackGo.press());
    }
    /// The same into an archive on the stick.
    void packIntoArchive()
    {
        answer(Answer::Yes);
        desktop.choosers.chooseFolder(Stick);
        answer(Answer::Ok);
        EXPECT_TRUE(root().mnuPackGo.press());
    }
    /// Everything below the stick, one file or folder a line.
    [[nodiscard]] std::string tree(const QString& folder = Stick)
    {
        QStringList found;
        list(folder, QString(), found);
        return lines(found);
    }
    /// A list as it stands, line ends as bars.
    [[nodiscard]] std::string listText(const QString& path)
    {
        return QString::fromUtf8(bytes(path)).replace(QStringLiteral("\r\n"), QStringLiteral("|")).toStdString();
    }
    [[nodiscard]] std::string quiet() { return root().quietLine.Caption.value().toStdString(); }

    inline static const QString Stick = QStringLiteral("/media/stick");

private:
    void list(const QString& folder, const QString& shown, QStringList& found)
    {
        const QStringList files = desktop.disk().list(folder, QStringLiteral("*"));
        for (const QString& file : files)
            found += shown + file;
        const QStringList folders = desktop.disk().folders(folder);
        for (const QString& name : folders) {
            found += shown + name + u'/';
            list(folder + u'/' + name, shown + name + u'/', found);
        }
    }
};

} // namespace orvantine::fake
