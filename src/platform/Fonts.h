#pragma once

#include <QString>

namespace orvantine {

class Fonts
{
public:
    virtual ~Fonts() = default;

    /// True if a font of that family name can be used.
    [[nodiscard]] virtual bool known(const QString& family) const = 0;
    /// Makes a font file usable for this and later runs.
    virtual bool registerFont(const QString& path) = 0;
    /// Lets a font file of any family stand for this family in this run. False if it cannot be read.
    virtual bool provide(const QString& family, const QString& path) = 0;
};

} // namespace orvantine
