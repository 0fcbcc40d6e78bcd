#pragma once

#include <QByteArray>

#include <utility>

#include <unistd.h>

namespace orvantine {

/// Owner of an open file descriptor.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            close();
            m_number = std::exchange(other.m_number, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int get() const { return m_number; }
    /// Somebody else closes it.
    [[nodiscard]] int release() { return std::exchange(m_number, -1); }
    void close()
    {
        if (m_number >= 0)
            ::close(std::exchange(m_number, -1));
    }

private:
    int m_number;
};

/// Reads up to `length` bytes at `offset`; fewer at the end of the file. False on an error.
[[nodiscard]] bool readAt(const Descriptor& file, qint64 offset, qint64 length, QByteArray& bytes);
/// Writes all bytes at `offset`; false if the device took fewer.
[[nodiscard]] bool writeAt(const Descriptor& file, qint64 offset, QByteArrayView bytes);
/// The file that a path leads to through all links; "" with `errno` where nothing stands.
[[nodiscard]] QByteArray realPath(const QByteArray& path);
/// Sets the modification time to now, to the nanosecond. The kernel's own time stands still for some milliseconds, so
/// that two changes could bear one time; after this call any other change bears another one.
void stampNow(const Descriptor& file);

} // namespace orvantine
