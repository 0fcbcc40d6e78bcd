#pragma once

#include "platform/SettingsStore.h"

#include <optional>

namespace orvantine {

struct Root;

/// Loads the whole catalogue from the database file. Rows are packed: a gap in the numbers is skipped. Tells how many
/// playlist files are missing, if the option asks for it.
void mnuLaden_Click(Root& root);
/// Another name of the same.
void GetLoadListe(Root& root);

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
