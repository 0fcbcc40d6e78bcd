#pragma once

#include "platform/SettingsStore.h"

#include <QString>

#include <functional>
#include <optional>

namespace orvantine {

struct Root;

/// One file of a command that treats file after file: if a step fails, what was done to this one is put back and the
/// command goes on; the reason is told at its end. `steps` gives false for a step that is no action on the disk.
bool changeAlone(Root& root, const std::function<bool()>& steps);

/// The path with "bak" in the place of its last three characters; "" for a shorter one.
[[nodiscard]] QString backupOfList(const QString& path);

/// While one lives, a reload asks nothing of lists with one name. The value is put back as it was, or stays absent.
class DoublesUnasked
{
public:
    explicit DoublesUnasked(Root& root);
    ~DoublesUnasked();
    DoublesUnasked(const DoublesUnasked&) = delete;
    DoublesUnasked& operator=(const DoublesUnasked&) = delete;

private:
    Root& m_root;
    std::optional<SettingValue> m_before;
};

} // namespace orvantine
