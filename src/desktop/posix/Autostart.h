#pragma once

#include <QString>

#include <optional>

namespace orvantine {

/// The entry that starts the program with the desktop: `Orvantinen.desktop` in the autostart folder. It keeps the
/// command as it was given ("<folder>\Orvantine.exe /hide") beside the one that the desktop runs.
class Autostart
{
public:
    /// `program` is run where the given command names no existing file.
    Autostart(QString folder, QString program);

    [[nodiscard]] std::optional<QString> command() const;
    bool setCommand(const QString& command);
    /// False if there is none.
    bool remove();

private:
    [[nodiscard]] QByteArray file() const;

    QString m_folder;
    QString m_program;
};

} // namespace orvantine
