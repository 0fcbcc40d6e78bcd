#include "desktop/media/MpvLibrary.h"

#include <QLibrary>

#include <type_traits>

namespace orvantine {

MpvLibrary::MpvLibrary(const QString& name)
{
    QLibrary library{name};
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto resolve = [&library](auto& function, const char* symbol) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(symbol));
        return function != nullptr;
    };
    m_usable =
        library.load() && resolve(create, "mpv_create") && resolve(initialize, "mpv_initialize") &&
        resolve(terminateDestroy, "mpv_terminate_destroy") && resolve(setOptionString, "mpv_set_option_string") &&
        resolve(commandAsync, "mpv_command_async") && resolve(setPropertyAsync, "mpv_set_property_async") &&
        resolve(getPropertyAsync, "mpv_get_property_async") && resolve(observeProperty, "mpv_observe_property") &&
        resolve(waitEvent, "mpv_wait_event") && resolve(setWakeupCallback, "mpv_set_wakeup_callback");
}

} // namespace orvantine
