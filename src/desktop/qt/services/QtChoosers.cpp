#include "desktop/qt/services/QtChoosers.h"

#include "desktop/qt/services/FolderPlaces.h"
#include "desktop/qt/services/QtMessages.h"

#include <QFileDialog>
#include <QFontDialog>
#include <QScopeGuard>
#include <QUrl>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// "*.jpg", ".jpg" and "jpg" all mean "jpg".
QString bareExtension(const QString& extension)
{
    return extension.mid(extension.lastIndexOf(u'.') + 1);
}

bool isAbsolute(const QString& folder)
{
    return folder.startsWith(u'/') || folder.startsWith(u'\\') || (folder.size() > 1 && folder[1] == u':');
}

/// Folder without a trailing separator, and name.
std::optional<ChosenFile> runFileDialog(QFileDialog& dialog, const FileRequest& request, const QString& startFolder)
{
    dialog.setWindowTitle(request.title);
    dialog.setDefaultSuffix(bareExtension(request.defaultExtension));
    dialog.setNameFilters(nameFilters(request.filter));
    if (!startFolder.isEmpty())
        dialog.setDirectory(startFolder);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString path = dialog.selectedFiles().constFirst();
    const qsizetype cut = path.lastIndexOf(u'/');
    return ChosenFile{path.left(cut), path.mid(cut + 1)};
}

} // namespace

QStringList nameFilters(const QString& filter)
{
    QStringList filters;
    const QStringList parts = filter.split(u'|', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        const QStringList told = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (const QString& pattern : told)
            patterns.append(pattern.trimmed() == u"*.*" ? u"*"_s : pattern.trimmed());
        filters.append(u"%1 (%2)"_s.arg(parts[i].trimmed(), patterns.join(u' ')));
    }
    return filters;
}

std::optional<ChosenFile> QtChoosers::openFile(const FileRequest& request)
{
    QFileDialog dialog(frontWindow());
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return runFileDialog(dialog, request, hostFolder(request.folder));
}

std::optional<ChosenFile> QtChoosers::saveFile(const FileRequest& request)
{
    QFileDialog dialog(frontWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    return runFileDialog(dialog, request, hostFolder(request.folder));
}

QString QtChoosers::folder(const FolderRequest& request)
{
    QFileDialog dialog(frontWindow());
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setWindowTitle(request.prompt);
    const FolderPlaces places = folderPlaces(request.root, mountTable());
    const QString start = hostFolder(request.folder);
    dialog.setDirectory(start.isEmpty() ? places.start : start);
    // A dialog that ends hands its side bar on to all that follow.
    const QScopeGuard putBack([&dialog, before = dialog.sidebarUrls()] { dialog.setSidebarUrls(before); });
    QList<QUrl> sideBar;
    for (const QString& place : places.beside)
        sideBar += QUrl::fromLocalFile(place);
    dialog.setSidebarUrls(sideBar);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

std::optional<FontChoice> QtChoosers::font(const FontChoice& present)
{
    QFontDialog dialog(frontWindow());
    dialog.setWindowTitle(u"Schriftart"_s);
    QFont font;
    if (!present.family.isEmpty())
        font.setFamily(present.family);
    if (present.size > 0)
        font.setPointSizeF(present.size);
    dialog.setCurrentFont(font);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return FontChoice{dialog.selectedFont().family(), dialog.selectedFont().pointSizeF()};
}

QString QtChoosers::hostFolder(const QString& folder) const
{
    // A mark in the place of a folder ("1") would name one beside wherever the program was started.
    if (!isAbsolute(folder) || !m_files.isFolder(folder))
        return {};
    return QFile::decodeName(m_files.nativePath(folder).value_or(QByteArray()));
}

} // namespace orvantine
