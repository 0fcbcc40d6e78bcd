#pragma once

#include "desktop/posix/Descriptor.h"

namespace orvantine {

/// Two pieces that follow one another.
struct Pieces
{
    QByteArrayView head;
    QByteArrayView rest;

    [[nodiscard]] qint64 size() const { return head.size() + rest.size(); }
};

/// How many bytes both begin with, and end with.
[[nodiscard]] qsizetype commonFront(QByteArrayView one, QByteArrayView other);
[[nodiscard]] qsizetype commonBack(QByteArrayView one, QByteArrayView other);

/// Puts `fresh` in the place of `old`, with which the file ends unless both are of one length, from `offset` on. What
/// goes beyond the old end is written first: a full disk shows there, and then the old bytes still stand. False with
/// `errno`; what was begun is taken back as far as that goes.
[[nodiscard]] bool replaceTail(const Descriptor& file, qint64 offset, QByteArrayView old, const Pieces& fresh);

/// Gives a file its name, but not over what stands there: false with EEXIST then.
[[nodiscard]] bool placeAnew(const QByteArray& scratch, const QByteArray& path);

/// False with `errno`.
[[nodiscard]] bool truncateTo(const Descriptor& file, qint64 size);

} // namespace orvantine
