#pragma once

#include <QByteArray>
#include <QString>

namespace orvantine {

/// The one place where texts become bytes and bytes become texts. Reading does not depend on the kind: a BOM is
/// dropped, valid UTF-8 is taken as UTF-8. In any other text each line speaks for itself: it is UTF-8 if it is valid,
/// else windows-1252, so that one old line does not spoil the names in the others.
class CodePage
{
public:
    enum Kind { Utf8, Windows1252 };

    constexpr explicit(false) CodePage(Kind kind = Utf8) : m_kind(kind) {}

    [[nodiscard]] QString decode(const QByteArray& bytes) const;
    /// Without a BOM. What does not fit into windows-1252 becomes "?", one for each character.
    [[nodiscard]] QByteArray encode(const QString& text) const;

    /// All 256 bytes have a character: the five that windows-1252 leaves open become the control of that number, so
    /// that encoding gives the same bytes again.
    [[nodiscard]] static QString fromWindows1252(QByteArrayView bytes);
    [[nodiscard]] static QByteArray toWindows1252(QStringView text);

private:
    Kind m_kind;
};

} // namespace orvantine
