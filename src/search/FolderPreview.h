#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

struct Root;

/// What a replacement of folders would change, found out list after list. It writes nothing.
class FolderPreview
{
public:
    /// Required: more numbers than the catalogue has rows.
    static constexpr int NumbersLookedAt = 200;

    FolderPreview(Root& root, QString old, QString fresh);

    /// Looks at the next list; false if there is none left.
    bool step();
    /// In a sentence for the user.
    [[nodiscard]] QString text() const;

    /// The new text holds the old one, so that a replacement would never end.
    [[nodiscard]] static bool neverEnds(const QString& old, const QString& fresh);

private:
    void lookAt(const QString& path);

    Root& m_root;
    const QString m_old;
    const QString m_fresh;
    QStringList m_lists;
    qsizetype m_next = 0;
    /// Not every list could be read.
    bool m_doubted = false;
    qint64 m_entries = 0;
    qint64 m_changedLists = 0;
    qint64 m_existing = 0;
};

} // namespace orvantine
