#pragma once

#include <QStringList>

#include <functional>

namespace orvantine::fake {

/// Where a fake says that something happened that the test did not provide for. A complaint fails the test.
class Complaints
{
public:
    void add(const QString& text)
    {
        m_texts.append(text);
        Report(text);
    }
    [[nodiscard]] const QStringList& texts() const { return m_texts; }
    void clear() { m_texts.clear(); }

    /// Told at once of every complaint.
    std::function<void(const QString&)> Report = [](const QString&) {};

private:
    QStringList m_texts;
};

} // namespace orvantine::fake
