#pragma once

#include "platform/Priority.h"

namespace orvantine {

/// The nice value of the thread that asks. Normal is the one that the program was started with.
class NicePriority final : public Priority
{
public:
    NicePriority();

    void set(ProcessPriority priority) override;

private:
    int m_normal;
};

} // namespace orvantine
