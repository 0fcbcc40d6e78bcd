#include "desktop/posix/JournalNotes.h"

#include <QMap>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace orvantine;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Zeros behind its end.
class Input
{
public:
    explicit Input(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    [[nodiscard]] bool atEnd() const { return m_at >= m_bytes.size(); }
    [[nodiscard]] int number(int below) { return atEnd() ? 0 : static_cast<unsigned char>(m_bytes[m_at++]) % below; }
    [[nodiscard]] QByteArray bytes(int length)
    {
        const QByteArray taken = m_bytes.mid(m_at, length);
        m_at += length;
        return taken;
    }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
};

/// A place in a small file, or the last ones that a note can tell.
qint64 place(Input& input)
{
    constexpr int Places = 48;
    constexpr int FirstFar = 40;
    const int number = input.number(Places);
    return number < FirstFar ? number : (qint64{1} << 62) - 1 - (number - FirstFar);
}

JournalNote note(Input& input)
{
    constexpr int Kinds = 11;
    constexpr int LongestText = 40;
    const QByteArray path = input.number(2) == 0 ? QByteArray("/m/Liste.m3u") : QByteArray("/m/Orvantine.dat");
    JournalNote result;
    result.kind = static_cast<JournalNote::Kind>(input.number(Kinds));
    result.path = result.kind == JournalNote::Kind::Scratch ? scratchName(path) : path;
    result.offset = place(input);
    result.length = place(input);
    result.inode = static_cast<quint64>(input.number(3));
    result.fileSystem = static_cast<quint64>(input.number(2));
    result.bytes = input.bytes(input.number(LongestText));
    return result;
}

/// What is read writes the same bytes again.
std::vector<ReadNote> readWhole(const QByteArray& journal)
{
    std::vector<ReadNote> notes = decodedNotes(journal);
    QByteArray again;
    for (const ReadNote& read : notes) {
        again += encodedNote(read.note);
        require(again.size() == read.end);
    }
    require(journal.startsWith(again));
    return notes;
}

/// A file as the notes tell of it is theirs; whatever they tell, no crash.
void follow(const std::vector<ReadNote>& notes, std::size_t target, const QByteArray& found)
{
    QMap<QByteArray, FileHistory> files;
    for (std::size_t at = 0; at < notes.size(); ++at) {
        FileHistory& file = files[notes[at].note.path];
        file.take(notes[at].note);
        if (at < target)
            file.setTarget();
    }
    for (const FileHistory& file : files) {
        require(file.base() >= 0 && file.longestTail() >= file.target().tail.size());
        static_cast<void>(file.explains(found, true));
        if (file.isSound() && !file.kept())
            require(file.explains(file.target().exists ? std::optional(file.target().tail) : std::nullopt, false));
    }
}

/// One changed byte ends the journal in front of its note.
void damage(QByteArray journal, const std::vector<ReadNote>& notes, qsizetype at)
{
    journal[at] = static_cast<char>(journal[at] ^ 0x10);
    const auto hit = std::find_if(notes.begin(), notes.end(), [at](const ReadNote& read) { return at < read.end; });
    require(decodedNotes(journal).size() == static_cast<std::size_t>(hit - notes.begin()));
}

} // namespace

/// The first byte tells whether the bytes are a journal or the notes of one, which then have good checksums. Neither
/// may lead astray: a note is read as it was written or not at all, and what notes tell of a file is followed safely.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    QByteArray journal;
    if (input.number(2) == 0) {
        journal = input.bytes(static_cast<int>(size));
    } else {
        while (!input.atEnd())
            journal += encodedNote(note(input));
    }
    const std::vector<ReadNote> notes = readWhole(journal);
    const std::size_t target = size % (notes.size() + 1);
    follow(notes, target, journal.right(static_cast<qsizetype>(size % 64)));
    if (!notes.empty())
        damage(journal, notes, static_cast<qsizetype>(size * 7919) % notes.back().end);
    return 0;
}
