#pragma once

#include <QtGlobal>

#include <vector>

namespace orvantine {

/// Open addressing of (hash, value): eight bytes a slot, nothing else, so that an index over 100,000 keys takes about
/// two megabytes. Whether a value is the wanted one is for the caller to say. Values below 0xfffffffe.
class HashIndex
{
public:
    static constexpr quint32 none = 0xffffffff;

    /// The first value of that hash for which `matches(value)` is true, else `none`.
    template <class Matches>
    [[nodiscard]] quint32 find(quint32 hash, const Matches& matches) const
    {
        if (m_slots.empty())
            return none;
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = m_slots[i];
            if (slot.value == none)
                return none;
            if (slot.value != removed && slot.hash == hash && matches(slot.value))
                return slot.value;
        }
    }

    void insert(quint32 hash, quint32 value)
    {
        if ((m_used + 1) * 4 > m_slots.size() * 3)
            grow();
        place(hash, value);
        ++m_used;
        ++m_count;
    }

    void remove(quint32 hash, quint32 value)
    {
        if (m_slots.empty())
            return;
        for (std::size_t i = hash & mask(); m_slots[i].value != none; i = (i + 1) & mask()) {
            if (m_slots[i].value == value) {
                m_slots[i].value = removed;
                --m_count;
                return;
            }
        }
    }

    /// Adds `delta` to every value above `above`.
    void shift(quint32 above, qint64 delta)
    {
        for (Slot& slot : m_slots) {
            if (slot.value > above && slot.value < removed)
                slot.value = static_cast<quint32>(slot.value + delta);
        }
    }

private:
    static constexpr quint32 removed = 0xfffffffe;

    struct Slot
    {
        quint32 hash = 0;
        quint32 value = none;
    };

    [[nodiscard]] std::size_t mask() const { return m_slots.size() - 1; }

    void place(quint32 hash, quint32 value)
    {
        std::size_t i = hash & mask();
        while (m_slots[i].value != none)
            i = (i + 1) & mask();
        m_slots[i] = {hash, value};
    }

    void grow()
    {
        std::size_t size = 16;
        while (size < m_count * 2 + 2)
            size *= 2;
        std::vector<Slot> old(size);
        old.swap(m_slots);
        for (const Slot& slot : old) {
            if (slot.value < removed)
                place(slot.hash, slot.value);
        }
        m_used = m_count;
    }

    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
    // Slots that are not empty, the removed ones among them.
    std::size_t m_used = 0;
};

} // namespace orvantine
