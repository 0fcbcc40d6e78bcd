#include "desktop/qt/services/QtForms.h"

#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"

#include <QApplication>
#include <QEventLoop>

#include <utility>

namespace orvantine {

namespace {

void bringToFront(QWidget& window)
{
    if (window.isMinimized())
        window.showNormal();
    window.raise();
    window.activateWindow();
}

} // namespace

QtForms::QtForms() = default;

QtForms::~QtForms()
{
    dropAll();
}

void QtForms::setMainWindow(Form* form, QWidget* window)
{
    m_mainForm = form;
    m_mainWindow = window;
}

void QtForms::dropAll()
{
    const auto windows = std::exchange(m_windows, {});
    for (const auto& entry : windows)
        delete entry.second.data();
}

FormWindow* QtForms::load(Form& form)
{
    if (const auto found = m_windows.find(&form); found != m_windows.end() && found->second)
        return static_cast<FormWindow*>(found->second.data());
    const FormBuilder build = formBuilder(form.name);
    if (build == nullptr)
        return nullptr;
    QWidget* const front = QApplication::activeModalWidget();
    auto* const window = new FormWindow(form, *this, front != nullptr ? front : m_mainWindow);
    build(*window);
    m_windows[&form] = window;
    if (form.Load)
        form.Load();
    // A form may end itself while it loads.
    return m_windows.count(&form) > 0 ? window : nullptr;
}

void QtForms::showModal(Form& form)
{
    FormWindow* const window = load(form);
    if (window == nullptr || form.Visible.value())
        return;
    window->setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    const auto watch = form.Visible.addNotifier([&form, &loop] {
        if (!form.Visible.value())
            loop.quit();
    });
    form.Visible = true;
    loop.exec(QEventLoop::DialogExec);
}

void QtForms::show(Form& form)
{
    FormWindow* const window = load(form);
    if (window == nullptr)
        return;
    if (form.Visible.value()) {
        bringToFront(*window);
        return;
    }
    window->setWindowModality(Qt::NonModal);
    form.Visible = true;
}

void QtForms::unload(Form& form)
{
    const auto found = m_windows.find(&form);
    if (found == m_windows.end())
        return;
    auto* const window = static_cast<FormWindow*>(found->second.data());
    m_windows.erase(found);
    form.Visible = false;
    if (window != nullptr) {
        // Until it is gone it must not touch the form, which may be gone before it.
        window->bindings().clear();
        QApplication::instance()->removeEventFilter(window);
        window->deleteLater();
    }
    if (form.Unload)
        form.Unload();
}

void QtForms::toFront(Form& form)
{
    if (&form == m_mainForm) {
        // A window in the tray comes up when its state and place are told.
        if (form.Visible.value())
            bringToFront(*m_mainWindow);
    } else if (const auto found = m_windows.find(&form); found != m_windows.end() && found->second) {
        bringToFront(*found->second);
    }
}

} // namespace orvantine
