#include "desktop/qt/forms/PropertiesDialog.h"

#include <QDateTime>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeDatabase>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QLocale& german()
{
    static const QLocale locale(QLocale::German, QLocale::Germany);
    return locale;
}

QString timeText(const timespec& time)
{
    return german().toString(QDateTime::fromSecsSinceEpoch(time.tv_sec), u"dd.MM.yyyy, HH:mm:ss"_s);
}

QString sizeText(qint64 bytes)
{
    return u"%1 (%2 Bytes)"_s.arg(german().formattedDataSize(bytes), german().toString(bytes));
}

QString rightsText(const QByteArray& path)
{
    QStringList rights;
    if (::access(path.constData(), R_OK) == 0)
        rights.append(u"lesen"_s);
    if (::access(path.constData(), W_OK) == 0)
        rights.append(u"schreiben"_s);
    if (::access(path.constData(), X_OK) == 0)
        rights.append(u"ausführen"_s);
    return rights.isEmpty() ? u"keine"_s : rights.join(u", "_s);
}

} // namespace

QDialog* showPropertiesDialog(const QByteArray& nativePath, QWidget* parent)
{
    struct stat file = {};
    ::stat(nativePath.constData(), &file);
    const QString path = QFile::decodeName(nativePath);
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const QString name = path.mid(nameStart);
    auto* const dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(u"FileProperties"_s);
    dialog->setWindowTitle(u"Eigenschaften von %1"_s.arg(name));

    auto* const rows = new QFormLayout;
    rows->setHorizontalSpacing(16);
    rows->setVerticalSpacing(6);
    const auto addRow = [&](const QString& caption, const QString& value) {
        auto* const label = new QLabel(value, dialog);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        rows->addRow(caption, label);
    };
    addRow(u"Name:"_s, name);
    addRow(u"Ordner:"_s, path.left(std::max<qsizetype>(nameStart - 1, 1)));
    addRow(u"Art:"_s, QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension).name());
    addRow(u"Größe:"_s, sizeText(file.st_size));
    addRow(u"Geändert:"_s, timeText(file.st_mtim));
    addRow(u"Letzter Zugriff:"_s, timeText(file.st_atim));
    addRow(u"Rechte:"_s, rightsText(nativePath));

    auto* const buttons = new QDialogButtonBox(dialog);
    QPushButton* const close = buttons->addButton(u"&Schließen"_s, QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);

    auto* const layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addLayout(rows);
    layout->addStretch();
    layout->addWidget(buttons);
    dialog->resize(440, dialog->sizeHint().height());
    dialog->show();
    return dialog;
}

} // namespace orvantine
