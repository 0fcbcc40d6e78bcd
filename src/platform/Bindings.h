#pragma once

#include <QProperty>

#include <deque>
#include <utility>

namespace orvantine {

/// The watches that a widget keeps on the properties of its controls. Ends all of them when it goes, so it must be a
/// member of the widget that they act on.
class Bindings
{
public:
    /// Applies the value now and after every change. `apply` takes the value.
    template <class T, class F>
    void follow(QProperty<T>& property, F apply)
    {
        apply(property.value());
        watch(property, [&property, apply] { apply(property.value()); });
    }

    /// Calls `react` after every change of the property.
    template <class T, class F>
    void watch(QProperty<T>& property, F react)
    {
        m_notifiers.push_back(property.addNotifier(std::move(react)));
    }

    void clear() { m_notifiers.clear(); }

private:
    std::deque<QPropertyNotifier> m_notifiers;
};

} // namespace orvantine
