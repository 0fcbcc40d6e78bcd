#include "platform/FileDirPath.h"

#include <algorithm>

namespace orvantine::FileDirPath {

using namespace Qt::StringLiterals;

namespace {

bool isSeparator(QChar c)
{
    return c == u'\\' || c == u'/';
}

/// Number of characters up to and including the last separator.
qsizetype folderLength(QStringView path)
{
    return std::find_if(path.rbegin(), path.rend(), isSeparator).base() - path.begin();
}

} // namespace

QString FileNameOf(const QString& path)
{
    return path.mid(folderLength(path));
}

QString FolderOf(const QString& path)
{
    return path.left(folderLength(path));
}

bool hasSeparator(QStringView text)
{
    return std::any_of(text.begin(), text.end(), isSeparator);
}

bool isAbsolute(QStringView path)
{
    if (path.isEmpty())
        return false;
    if (isSeparator(path.front()))
        return true;
    return path.size() >= 3 && path.front().isLetter() && path[1] == u':' && isSeparator(path[2]);
}

bool canBeFileName(QStringView name)
{
    return std::none_of(name.begin(), name.end(),
                        [](QChar c) { return c.unicode() < 0x20 || u"/\\:*?\"<>|"_s.contains(c); });
}

bool canBeFolderName(QStringView name)
{
    return canBeFileName(name) && name != u"." && name != u"..";
}

QChar separatorOf(QStringView base)
{
    const auto* const found = std::find_if(base.begin(), base.end(), isSeparator);
    return found == base.end() ? QChar(u'/') : *found;
}

QString join(const QString& base, QStringView name)
{
    QString joined = base;
    if (base.isEmpty() || !isSeparator(base.back()))
        joined += separatorOf(base);
    return joined += name;
}

QString withoutSeparator(QString folder)
{
    const auto isRoot = [](const QString& path) { return path.size() == 1 || (path.size() == 3 && path[1] == u':'); };
    while (!folder.isEmpty() && isSeparator(folder.back()) && !isRoot(folder))
        folder.chop(1);
    return folder;
}

QString without(const QString& name, int characters)
{
    return name.chopped(std::min<qsizetype>(characters, name.size()));
}

QString titleOf(const QString& path)
{
    constexpr int EndingWithPoint = 4;
    return without(FileNameOf(path), EndingWithPoint);
}

QString withoutQuotes(QString path)
{
    if (path.startsWith(u'"'))
        path.remove(0, 1);
    if (path.endsWith(u'"'))
        path.chop(1);
    return path;
}

QString compared(const QString& path)
{
    return QString(path).replace(u'\\', u'/').normalized(QString::NormalizationForm_C).toCaseFolded();
}

bool isSameFile(const QString& one, const QString& other)
{
    return one == other || compared(one) == compared(other);
}

} // namespace orvantine::FileDirPath
