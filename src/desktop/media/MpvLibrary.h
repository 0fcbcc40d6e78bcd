#pragma once

#include <QString>

#include <mpv/client.h>

namespace orvantine {

/// The client library of the player, loaded by name when it is first needed: linked, it would cost every start of the
/// program time and memory, though most starts play nothing.
class MpvLibrary
{
public:
    /// Loads `name` ("libmpv.so.2"). It stays loaded until the process ends.
    explicit MpvLibrary(const QString& name);

    /// False if the library or one of its functions is missing; then none of the functions below may be called.
    [[nodiscard]] bool usable() const { return m_usable; }

    decltype(&mpv_create) create = nullptr;
    decltype(&mpv_initialize) initialize = nullptr;
    decltype(&mpv_terminate_destroy) terminateDestroy = nullptr;
    decltype(&mpv_set_option_string) setOptionString = nullptr;
    decltype(&mpv_command_async) commandAsync = nullptr;
    decltype(&mpv_set_property_async) setPropertyAsync = nullptr;
    decltype(&mpv_get_property_async) getPropertyAsync = nullptr;
    decltype(&mpv_observe_property) observeProperty = nullptr;
    decltype(&mpv_wait_event) waitEvent = nullptr;
    decltype(&mpv_set_wakeup_callback) setWakeupCallback = nullptr;

private:
    bool m_usable = false;
};

} // namespace orvantine
