#pragma once

#include "platform/Twips.h"

namespace orvantine {

struct ScreenSize
{
    Twips width = 0;
    Twips height = 0;
};

class Screen
{
public:
    virtual ~Screen() = default;

    [[nodiscard]] virtual ScreenSize size() const = 0;
};

} // namespace orvantine
