#pragma once

namespace orvantine {

/// The class of the process, under the number that it is told with.
enum class ProcessPriority : int { Normal = 32, High = 128 };

/// How much of the machine the program asks for.
class Priority
{
public:
    virtual ~Priority() = default;

    /// A host that does not grant it leaves all as it was.
    virtual void set(ProcessPriority priority) = 0;
};

} // namespace orvantine
