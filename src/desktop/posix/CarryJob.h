#pragma once

#include "desktop/posix/Descriptor.h"
#include "platform/Files.h"

#include <QByteArray>

#include <functional>

#include <sys/stat.h>

namespace orvantine {

/// A file on its way to another medium, under a name of its own until it is whole: see Files::carry. It touches no
/// other file, so it can be run beside the thread that serves events. What was not placed goes with it.
class CarryJob
{
public:
    /// `target` is absolute. `source` is what is copied, or else `bytes`.
    CarryJob(Descriptor source, const struct stat& info, QByteArray target);
    CarryJob(QByteArray bytes, QByteArray target);
    ~CarryJob();
    CarryJob(const CarryJob&) = delete;
    CarryJob& operator=(const CarryJob&) = delete;

    /// Takes a name that nobody else has, which is told before the file is made. False with `errno`.
    [[nodiscard]] bool begin(const std::function<void(const QByteArray& part)>& willMake);
    /// Takes away what was not placed.
    void drop();
    [[nodiscard]] qint64 size() const { return m_size; }

    /// Writes all of it and brings it to the medium. False with `error`, which is ECANCELED where it was stopped.
    [[nodiscard]] bool run(const CarryStep& goOn);
    [[nodiscard]] int error() const { return m_error; }

    /// All bytes, for one that is small enough.
    [[nodiscard]] bool isSame(const Descriptor& other) const;
    /// Takes the name. False with `errno`.
    [[nodiscard]] bool place(mode_t mode);

private:
    [[nodiscard]] bool write(const CarryStep& goOn);
    [[nodiscard]] bool nextPiece(qint64 offset, QByteArray& piece) const;
    /// The file that was read is still as it was when it was opened.
    [[nodiscard]] bool isUntouched() const;
    [[nodiscard]] bool open(const QByteArray& name);

    Descriptor m_source;
    struct stat m_info = {};
    QByteArray m_bytes;
    qint64 m_size = 0;
    QByteArray m_target;
    QByteArray m_part;
    Descriptor m_file;
    int m_error = 0;
};

/// The name that a file bears on its way.
inline constexpr char CarriedEnding[] = ".part";

} // namespace orvantine
