#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

class Clipboard
{
public:
    virtual ~Clipboard() = default;

    [[nodiscard]] virtual QString text() const = 0;
    /// Local files and folders that were copied in a file manager, as the Files service names them; empty for none.
    [[nodiscard]] virtual QStringList files() const = 0;
    virtual void setText(const QString& text) = 0;
};

} // namespace orvantine
