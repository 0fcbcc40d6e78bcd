#include "runner/World.h"

#include "app/Direkthilfe.h"
#include "metadata/frmID3.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "search/ErrorListe.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "search/Suchen.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Optionen.h"
#include "shell/Startup.h"
#include "shell/Tastatur.h"
#include "support/Quoting.h"
#include "transfer/Fassungen.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Kopieren.h"
#include "transfer/Trackcopy.h"

#include <QDir>

#include <algorithm>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

World::~World()
{
    if (m_desktop)
        QDir::setCurrent(m_folderBefore);
}

fake::FakeDesktop& World::desktop()
{
    if (!m_desktop) {
        m_folderBefore = QDir::currentPath();
        m_desktop = std::make_unique<fake::FakeDesktop>(options);
        QDir::setCurrent(m_desktop->base);
        Made(*m_desktop);
    }
    return *m_desktop;
}

QList<std::pair<QString, QString>> World::placeholders()
{
    const fake::FakeDesktop& there = desktop();
    QList<std::pair<QString, QString>> all{
        {u"data"_s, there.folders.applicationData + u"/Orvanten Manager"_s},
        {u"appdata"_s, there.folders.applicationData},
        {u"program"_s, there.folders.program},
        {u"documents"_s, there.folders.documents},
        {u"music"_s, there.folders.music},
        {u"windows"_s, there.folders.windows},
        {u"tmp"_s, there.folders.temp},
        {u"recovery"_s, there.base + u"/recovery"_s},
        {u"base"_s, there.base},
    };
    std::stable_sort(all.begin(), all.end(),
                     [](const auto& left, const auto& right) { return left.second.size() > right.second.size(); });
    return all;
}

std::optional<QByteArray> World::expanded(const Word& word, QString* error)
{
    QByteArray bytes;
    for (const Word::Part& part : word.parts) {
        if (!part.placeholder) {
            bytes += part.bytes;
            continue;
        }
        const auto all = placeholders();
        const auto known = std::find_if(all.begin(), all.end(), [&](const std::pair<QString, QString>& entry) {
            return entry.first.toUtf8() == part.bytes;
        });
        if (known == all.end()) {
            *error = u"there is no placeholder {%1}"_s.arg(QString::fromUtf8(part.bytes));
            return std::nullopt;
        }
        bytes += known->second.toUtf8();
    }
    return bytes;
}

QByteArray World::hostPath(const QByteArray& path)
{
    QByteArray host = path;
    host.replace('\\', '/');
    if (host.size() >= 2 && host[1] == ':') {
        const QString drive = QString::fromLatin1(host.left(2)).toUpper();
        const QString folder = options.drives.value(drive);
        if (folder.isEmpty())
            return {};
        const QByteArray top =
            folder.startsWith(u'/') ? folder.toUtf8() : desktop().base.toUtf8() + '/' + folder.toUtf8();
        return top + '/' + host.mid(2);
    }
    return host.startsWith('/') ? host : desktop().base.toUtf8() + '/' + host;
}

QString World::shown(const QString& line)
{
    QString text = line;
    for (const auto& [name, path] : placeholders()) {
        for (qsizetype at = text.indexOf(path); at >= 0; at = text.indexOf(path, at + 1)) {
            const qsizetype end = at + path.size();
            if (end == text.size() || !text[end].isLetterOrNumber())
                text.replace(at, path.size(), u'{' + name + u'}');
        }
    }
    return text;
}

QString rendered(const Word& word)
{
    QString text;
    for (const Word::Part& part : word.parts) {
        if (part.placeholder)
            text += u'{' + QString::fromUtf8(part.bytes) + u'}';
        else
            text += word.quoted ? fake::escapedBytes(part.bytes) : QString::fromUtf8(part.bytes);
    }
    return word.quoted ? u'"' + text + u'"' : text;
}

std::vector<Form*> formsOf(Root& root)
{
    return {&root,
            root.startup.get(),
            root.info.get(),
            root.dialoge.get(),
            root.direkthilfe.get(),
            root.optionen.get(),
            root.tastatur.get(),
            root.positionen.get(),
            root.tagForm.get(),
            root.otherTagForm.get(),
            root.eigenschaften.get(),
            root.errorListe.get(),
            root.fassung.get(),
            root.fassungen.get(),
            root.folderCheck.get(),
            root.filesCopy.get(),
            root.ordner.get(),
            root.suchen.get(),
            root.findAudio.get(),
            root.kopieren.get(),
            root.trackcopy.get()};
}

} // namespace orvantine::scenario
