#pragma once

#include "platform/Forms.h"
#include "support/CallLog.h"
#include "support/Complaints.h"
#include "support/ScriptQueue.h"

#include <set>

namespace orvantine::fake {

/// Forms without a screen. What the user does in a modal form is scripted beforehand; one that nobody scripted is a
/// complaint, and so is one that its script leaves open. One that is up already is not shown modal once more.
class FakeForms final : public Forms
{
public:
    FakeForms(CallLog& log, Complaints& complaints);

    void showModal(Form& form) override;
    void show(Form& form) override;
    void unload(Form& form) override;
    void toFront(Form& form) override;

    /// The script for the modal form that comes up next; it must be the one of that name.
    void whileModal(const QString& name, std::function<void(Form&)> script);
    /// Names of the modal forms that are open, the foremost last.
    [[nodiscard]] const QStringList& modal() const { return m_modal; }
    void complainOfUnused();

    struct Script
    {
        QString name;
        std::function<void(Form&)> run;
    };
    ScriptQueue<Script> queue;
    /// Told when a modal form's script begins (true) and ends (false): other scripts open and close their scope.
    std::function<void(bool)> Nested = [](bool) {};

private:
    void load(Form& form);

    CallLog& m_log;
    Complaints& m_complaints;
    std::set<const Form*> m_loaded;
    QStringList m_modal;
};

} // namespace orvantine::fake
