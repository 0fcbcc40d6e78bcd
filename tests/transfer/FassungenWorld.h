#pragma once

#include "catalogue/CatalogueWorld.h"
#include "transfer/Fassungen.h"

namespace orvantine::fake {

/// Two lists of two tracks each; the window of the earlier versions is open while a test acts in it.
class FassungenWorld : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        setting(QStringLiteral("Error"), dwordSetting(0));
        putCatalogue({QStringLiteral("Eins"), QStringLiteral("Zwei")});
        start();
        click(1);
        desktop.memory()->AllKept.clear();
        forgetCalls();
    }

    Fassungen& form() { return *root().fassungen; }
    QList<MemoryFiles::Kept>& kept() { return desktop.memory()->AllKept; }
    /// One that was kept so many hours ago.
    void keep(const QString& path, const QByteArray& bytes, int hoursAgo = 1, const QString& reason = {})
    {
        const QDateTime when = QDateTime(QDate(2026, 11, 20), QTime(12, 0)).addSecs(-3600 * hoursAgo);
        kept().append({path, when, reason, bytes});
        std::stable_sort(
            kept().begin(), kept().end(),
            [](const MemoryFiles::Kept& one, const MemoryFiles::Kept& other) { return one.when < other.when; });
    }

    void inWindow(const std::function<void()>& act)
    {
        desktop.forms().whileModal(QStringLiteral("Fassungen"), [this, act](Form&) {
            act();
            if (form().Visible.value() && !desktop.events().ended())
                form().bAbbrechen.Click();
            else if (form().Visible.value())
                desktop.forms().unload(form());
        });
        ASSERT_TRUE(root().mnuFassungen.press());
    }
    void selectFile(int row)
    {
        ASSERT_TRUE(form().LDateien.select(row));
        form().LDateien.Click();
    }
    void selectVersion(int row)
    {
        ASSERT_TRUE(form().LFassungen.select(row));
        form().LFassungen.Click();
    }
    /// The comparing has come to its end.
    void settle() { desktop.events().run(std::chrono::seconds{1}); }

    /// Name, kind and number of versions of each file in sight.
    [[nodiscard]] std::string files()
    {
        QStringList all;
        const ListView& list = form().LDateien;
        for (int row = 1; row <= list.count(); ++row)
            all += list.text(row) + QStringLiteral(" | ") + list.subItem(row, 1) + QStringLiteral(" | ") +
                   list.subItem(row, 2);
        return lines(all);
    }
    /// The cells of each version.
    [[nodiscard]] std::string versions()
    {
        QStringList all;
        const ListView& list = form().LFassungen;
        for (int row = 1; row <= list.count(); ++row) {
            QStringList cells{list.text(row)};
            for (int sub = 1; sub <= 4; ++sub)
                cells += list.subItem(row, sub);
            all += cells.join(QStringLiteral(" | "));
        }
        return lines(all);
    }
    [[nodiscard]] std::string told() { return form().LMeldung.Caption.value().toStdString(); }
};

} // namespace orvantine::fake
