#include "desktop/sound/PulseLibrary.h"

#include <QLibrary>

#include <type_traits>

namespace orvantine {

PulseLibrary::PulseLibrary()
{
    QLibrary library{QStringLiteral("libpulse.so.0")};
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto resolve = [&library](auto& function, const char* symbol) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(symbol));
        return function != nullptr;
    };
    m_usable =
        library.load() && resolve(mainloopNew, "pa_mainloop_new") && resolve(mainloopFree, "pa_mainloop_free") &&
        resolve(mainloopGetApi, "pa_mainloop_get_api") && resolve(mainloopPrepare, "pa_mainloop_prepare") &&
        resolve(mainloopPoll, "pa_mainloop_poll") && resolve(mainloopDispatch, "pa_mainloop_dispatch") &&
        resolve(contextNew, "pa_context_new") && resolve(contextConnect, "pa_context_connect") &&
        resolve(contextDisconnect, "pa_context_disconnect") && resolve(contextGetState, "pa_context_get_state") &&
        resolve(contextUnref, "pa_context_unref") && resolve(getSinkInfoByName, "pa_context_get_sink_info_by_name") &&
        resolve(getSinkInfoList, "pa_context_get_sink_info_list") &&
        resolve(setSinkVolumeByIndex, "pa_context_set_sink_volume_by_index") &&
        resolve(getSourceInfoByName, "pa_context_get_source_info_by_name") &&
        resolve(setSourceVolumeByIndex, "pa_context_set_source_volume_by_index") &&
        resolve(operationGetState, "pa_operation_get_state") && resolve(operationCancel, "pa_operation_cancel") &&
        resolve(operationUnref, "pa_operation_unref") && resolve(streamNew, "pa_stream_new") &&
        resolve(streamConnectPlayback, "pa_stream_connect_playback") &&
        resolve(streamGetState, "pa_stream_get_state") && resolve(streamWritableSize, "pa_stream_writable_size") &&
        resolve(streamWrite, "pa_stream_write") && resolve(streamDrain, "pa_stream_drain") &&
        resolve(streamDisconnect, "pa_stream_disconnect") && resolve(streamUnref, "pa_stream_unref") &&
        resolve(volumeMax, "pa_cvolume_max") && resolve(volumeScale, "pa_cvolume_scale");
}

const PulseLibrary* PulseLibrary::get()
{
    static const PulseLibrary library;
    return library.m_usable ? &library : nullptr;
}

} // namespace orvantine
