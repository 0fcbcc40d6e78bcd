#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace orvantine {

/// The entries by which the common file managers send files to the program, for this user alone. A file of that name
/// that somebody else put there is left alone.
class SendToEntries
{
public:
    /// The XDG folders, and the program that an entry starts.
    SendToEntries(QString dataHome, QString configHome, QString sender);

    /// Any of them stands.
    [[nodiscard]] bool installed() const;
    /// True if at least one stands afterwards.
    bool install() const;
    /// True if none stands afterwards.
    bool remove() const;

private:
    struct Entry
    {
        QString path;
        QString text;
        bool program = false;
    };
    [[nodiscard]] std::vector<Entry> entries() const;

    QString m_dataHome;
    QString m_configHome;
    QString m_sender;
};

} // namespace orvantine
