#pragma once

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>
#include <pulse/stream.h>
#include <pulse/volume.h>

namespace orvantine {

/// The client library of the sound server, loaded by name when it is first needed, so that the program starts on a
/// machine without it. One for the whole process, as it never changes.
class PulseLibrary
{
public:
    /// Null where the library, or one of its functions, is missing.
    [[nodiscard]] static const PulseLibrary* get();

    decltype(&pa_mainloop_new) mainloopNew = nullptr;
    decltype(&pa_mainloop_free) mainloopFree = nullptr;
    decltype(&pa_mainloop_get_api) mainloopGetApi = nullptr;
    decltype(&pa_mainloop_prepare) mainloopPrepare = nullptr;
    decltype(&pa_mainloop_poll) mainloopPoll = nullptr;
    decltype(&pa_mainloop_dispatch) mainloopDispatch = nullptr;
    decltype(&pa_context_new) contextNew = nullptr;
    decltype(&pa_context_connect) contextConnect = nullptr;
    decltype(&pa_context_disconnect) contextDisconnect = nullptr;
    decltype(&pa_context_get_state) contextGetState = nullptr;
    decltype(&pa_context_unref) contextUnref = nullptr;
    decltype(&pa_context_get_sink_info_by_name) getSinkInfoByName = nullptr;
    decltype(&pa_context_get_sink_info_list) getSinkInfoList = nullptr;
    decltype(&pa_context_set_sink_volume_by_index) setSinkVolumeByIndex = nullptr;
    decltype(&pa_context_get_source_info_by_name) getSourceInfoByName = nullptr;
    decltype(&pa_context_set_source_volume_by_index) setSourceVolumeByIndex = nullptr;
    decltype(&pa_operation_get_state) operationGetState = nullptr;
    decltype(&pa_operation_cancel) operationCancel = nullptr;
    decltype(&pa_operation_unref) operationUnref = nullptr;
    decltype(&pa_stream_new) streamNew = nullptr;
    decltype(&pa_stream_connect_playback) streamConnectPlayback = nullptr;
    decltype(&pa_stream_get_state) streamGetState = nullptr;
    decltype(&pa_stream_writable_size) streamWritableSize = nullptr;
    decltype(&pa_stream_write) streamWrite = nullptr;
    decltype(&pa_stream_drain) streamDrain = nullptr;
    decltype(&pa_stream_disconnect) streamDisconnect = nullptr;
    decltype(&pa_stream_unref) streamUnref = nullptr;
    decltype(&pa_cvolume_max) volumeMax = nullptr;
    decltype(&pa_cvolume_scale) volumeScale = nullptr;

private:
    PulseLibrary();

    bool m_usable = false;
};

} // namespace orvantine
