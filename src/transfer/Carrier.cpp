#include "transfer/Carrier.h"

#include "app/Command.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "search/UsedLists.h"
#include "transfer/Kopieren.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// For so long a file that is on its way may go on after a stop.
constexpr qint64 MillisecondsToEnd = 1000;
/// What is over by then needs no dialog.
constexpr qint64 MillisecondsUnseen = 500;
/// So many are asked for between two moments at which events are served.
constexpr qsizetype FilesAtOnce = 64;

} // namespace

Carrier::Carrier(Root& root, Command& command, std::optional<qint64> totalBytes, Dialog dialog)
    : m_root(root), m_command(command), m_progress(root, totalBytes)
{
    if (dialog == Dialog::Late)
        m_lateSince = root.services.events.now();
}

Carrier::~Carrier()
{
    if (m_failed.isEmpty() || m_command.ended())
        return;
    const QString first = u"„%1“"_s.arg(FileDirPath::FileNameOf(m_failed.constFirst()));
    const QString what =
        m_failed.size() == 1 ? first : u"%1 Dateien, zuerst %2"_s.arg(QString::number(m_failed.size()), first);
    showQuietly(m_root,
                u"Nicht kopiert: %1. %2"_s.arg(what, m_firstFault ? reasonOf(*m_firstFault) : QString()).trimmed());
}

void Carrier::spare(const QStringList& files)
{
    for (const QString& file : files)
        m_spared += FileDirPath::compared(file);
    m_sparedPaths += files;
}

/// Which files they are is asked only where something stands at the target.
bool Carrier::isSpared(const QString& from, const QString& to)
{
    const std::optional<FileStamp> older = m_root.files.stamp(to);
    if (!older || FileDirPath::isSameFile(from, to))
        return false;
    if (m_spared.contains(FileDirPath::compared(to)))
        return true;
    const QStringList paths = std::exchange(m_sparedPaths, {});
    for (qsizetype i = 0; i < paths.size(); ++i) {
        if (i % FilesAtOnce == FilesAtOnce - 1 && !m_command.yield()) {
            m_brokenOff = true;
            return true;
        }
        if (const std::optional<FileStamp> stamp = m_root.files.stamp(paths[i]))
            m_sparedFiles += {stamp->device, stamp->inode};
    }
    const std::optional<FileStamp> source = m_root.files.stamp(from);
    const bool isItself = source && source->device == older->device && source->inode == older->inode;
    return !isItself && m_sparedFiles.contains({older->device, older->inode});
}

bool Carrier::goesOn(qint64 done, bool mayBeStopped)
{
    if (m_lateSince && m_lateSince->msecsTo(m_root.services.events.now()) >= MillisecondsUnseen) {
        m_lateSince.reset();
        showTransfer(m_root);
    }
    m_progress.show(done);
    bool goesOn = m_command.yield();
    if (goesOn && mayBeStopped && stopAsked(m_root)) {
        const QDateTime now = m_root.services.events.now();
        if (!m_stopAsked.isValid() || now < m_stopAsked)
            m_stopAsked = now;
        goesOn = m_stopAsked.msecsTo(now) < MillisecondsToEnd;
    }
    m_brokenOff = !goesOn;
    return goesOn;
}

void Carrier::noteFailure(const QString& path)
{
    const std::optional<WriteFault> fault = m_root.files.takeFault();
    if (m_failed.isEmpty())
        m_firstFault = fault;
    if (!m_failed.contains(path))
        m_failed += path;
}

Carrier::Outcome Carrier::carry(const QString& from, const QString& to)
{
    return carryFile(from, to, true);
}

Carrier::Outcome Carrier::carryBesides(const QString& from, const QString& to)
{
    return carryFile(from, to, false);
}

Carrier::Outcome Carrier::carryFile(const QString& from, const QString& to, bool mayBeStopped)
{
    if (m_command.ended())
        return Outcome::BrokenOff;
    const std::optional<qint64> size = m_root.files.size(from);
    if (!size)
        return Outcome::Missing;
    m_brokenOff = false;
    m_progress.beginFile(FileDirPath::FileNameOf(from), *size);
    const CarryStep step = [this, mayBeStopped](qint64 done) { return goesOn(done, mayBeStopped); };
    const bool carried = !isSpared(from, to) && m_root.files.carry(from, to, step);
    m_progress.endFile();
    if (carried)
        return Outcome::Carried;
    if (m_brokenOff)
        return Outcome::BrokenOff;
    noteFailure(from);
    return Outcome::Failed;
}

Carrier::Outcome Carrier::carryText(const QString& text, const QString& to, const QString& source)
{
    if (m_command.ended())
        return Outcome::BrokenOff;
    const CarryStep goOn = [this](qint64) { return m_command.yield(); };
    const bool carried = !isCatalogueFile(m_root, to) && m_root.files.carryBytes(m_root.files.encode(text), to, goOn);
    if (carried)
        return Outcome::Carried;
    if (m_command.ended())
        return Outcome::BrokenOff;
    noteFailure(source.isEmpty() ? to : source);
    return Outcome::Failed;
}

void Carrier::refuse(const QString& from)
{
    m_root.files.noteFault(WriteFault::NoSuchPlace);
    noteFailure(from);
}

void Carrier::settle(const QString& folder)
{
    if (!m_root.files.isFolder(folder) || m_command.ended())
        return;
    if (!m_root.files.settle(folder, [this](qint64) { return m_command.yield(); }) && !m_command.ended())
        noteFailure(FileDirPath::withoutSeparator(folder));
}

bool isCatalogueFile(const Root& root, const QString& path)
{
    constexpr int NoRow = 0;
    if (isUsedByAnother(root, NoRow, path))
        return true;
    if (!root.files.stamp(path))
        return false;
    const std::optional<UsedLists> used = UsedLists::read(root);
    return !used || used->contains(root, path);
}

std::optional<qint64> bytesOf(const Root& root, Command& command, const QStringList& files)
{
    qint64 sum = 0;
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (i % FilesAtOnce == FilesAtOnce - 1 && !command.yield())
            return {};
        sum += root.files.size(files[i]).value_or(0);
    }
    return sum;
}

} // namespace orvantine
