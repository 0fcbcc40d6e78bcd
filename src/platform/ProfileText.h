#pragma once

#include "platform/Files.h"
#include "platform/HashIndex.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace orvantine {

/// The bytes of a file in INI form with an index over them. A change is planned as an edit of the bytes first; once it
/// stands on disk it is applied here.
class ProfileText
{
public:
    struct Edit
    {
        enum Kind { Value, NewKey, RemovedKey, NewSection, RemovedSection, MovedSection };
        Kind kind = Value;
        qint64 offset = 0;
        qint64 length = 0;
        QByteArray bytes;
        /// Where in `bytes` the new key's line begins.
        qint64 line = 0;
        std::size_t section = 0;
    };

    /// `files` gives the code page and must outlive this.
    ProfileText(const Files& files, QByteArray bytes);

    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

    [[nodiscard]] QString value(const QString& section, const QString& key);
    /// In the file's order, each once.
    [[nodiscard]] QStringList keys(const QString& section) const;

    [[nodiscard]] static bool canHoldSection(const QString& section);
    [[nodiscard]] static bool canHoldKey(const QString& key);

    /// Nothing if the key has that value already. `value` is one line.
    [[nodiscard]] std::optional<Edit> planSet(const QString& section, const QString& key, const QString& value);
    [[nodiscard]] std::optional<Edit> planRemoveKey(const QString& section, const QString& key);
    [[nodiscard]] std::optional<Edit> planRemoveSection(const QString& section) const;
    /// Moves the section behind all others; nothing if it stands there or if there is no such section.
    [[nodiscard]] std::optional<Edit> planMoveToEnd(const QString& section) const;

    void apply(const Edit& edit);

private:
    /// A section reaches from its header to the next one. The values of `keys` are line offsets behind `body`.
    struct Section
    {
        quint32 header = 0;
        quint32 body = 0;
        quint32 end = 0;
        bool indexed = false;
        bool repeatsKeys = false;
        std::unique_ptr<HashIndex> keys;
    };
    struct Line
    {
        QByteArrayView key;
        /// What stands behind the "=", without the line end.
        qint64 valueOffset = 0;
        qint64 valueLength = 0;
    };

    void scan();
    void addSection(quint32 header, quint32 body);
    void indexKeys(Section& section);
    [[nodiscard]] std::optional<std::size_t> findSection(const QString& name) const;
    [[nodiscard]] std::optional<qint64> findKey(Section& section, const QString& key);
    /// The name as the code page can hold it.
    [[nodiscard]] QString held(const QString& name) const;
    [[nodiscard]] qint64 lineEnd(qint64 offset, qint64 limit) const;
    [[nodiscard]] std::optional<Line> keyLine(qint64 offset, qint64 limit) const;
    [[nodiscard]] QByteArrayView sectionName(qint64 offset, qint64 end) const;
    [[nodiscard]] quint32 hashOf(QByteArrayView text) const;
    [[nodiscard]] bool isNamed(QByteArrayView text, const QString& foldedName) const;

    const Files& m_files;
    QByteArray m_bytes;
    std::vector<Section> m_sections;
    HashIndex m_sectionsByName;
    bool m_repeatsSections = false;
};

} // namespace orvantine
