#include "support/FakeForms.h"

#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

FakeForms::FakeForms(CallLog& log, Complaints& complaints) : m_log(log), m_complaints(complaints) {}

void FakeForms::load(Form& form)
{
    if (m_loaded.insert(&form).second && form.Load)
        form.Load();
}

void FakeForms::showModal(Form& form)
{
    if (!m_log.call(u"forms.showModal %1"_s.arg(form.name)))
        return;
    load(form);
    if (form.Visible)
        return;
    std::optional<Script> script = queue.pop();
    form.Visible = true;
    if (!script) {
        m_complaints.add(u"the form %1 came up modal and nobody scripted it"_s.arg(form.name));
    } else if (script->name != form.name) {
        m_complaints.add(u"the form %1 came up modal, %2 was scripted"_s.arg(form.name, script->name));
    } else {
        m_modal.append(form.name);
        queue.enter();
        Nested(true);
        script->run(form);
        Nested(false);
        queue.leave();
        m_modal.removeLast();
        if (form.Visible)
            m_complaints.add(u"the form %1 is still open at the end of its script"_s.arg(form.name));
    }
    if (form.Visible)
        unload(form);
}

void FakeForms::show(Form& form)
{
    if (!m_log.call(u"forms.show %1"_s.arg(form.name)))
        return;
    load(form);
    form.Visible = true;
}

void FakeForms::unload(Form& form)
{
    if (!m_log.call(u"forms.unload %1"_s.arg(form.name)))
        return;
    if (m_loaded.erase(&form) == 0 && !form.Visible)
        return;
    form.Visible = false;
    if (form.Unload)
        form.Unload();
}

void FakeForms::toFront(Form& form)
{
    m_log.call(u"forms.toFront %1"_s.arg(form.name));
}

void FakeForms::whileModal(const QString& name, std::function<void(Form&)> script)
{
    queue.push({name, std::move(script)});
}

void FakeForms::complainOfUnused()
{
    for (const Script& script : queue.waiting())
        m_complaints.add(u"the form %1 was scripted and never came up modal"_s.arg(script.name));
    queue.clear();
}

} // namespace orvantine::fake
