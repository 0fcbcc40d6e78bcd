#include "platform/qt/PropertiesDialog.h"

#include <QDateTime>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeDatabase>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QLocale& german()
{
    static const QLocale locale(QLocale::German, QLocale::Germany);
    return locale;
}

QString timeText(const QDateTime& time)
{
    return german().toString(time, u"dd.MM.yyyy, HH:mm:ss"_s);
}

QString sizeText(qint64 bytes)
{
    return u"%1 (%2 Bytes)"_s.arg(german().formattedDataSize(bytes), german().toString(bytes));
}

QString rightsText(const QFileInfo& file)
{
    QStringList rights;
    if (file.isReadable())
        rights.append(u"lesen"_s);
    if (file.isWritable())
        rights.append(u"schreiben"_s);
    if (file.isExecutable())
        rights.append(u"ausführen"_s);
    return rights.isEmpty() ? u"keine"_s : rights.join(u", "_s);
}

} // namespace

void showPropertiesDialog(const QString& path, QWidget* parent)
{
    const QFileInfo file(path);
    QDialog dialog(parent);
    dialog.setObjectName(u"FileProperties"_s);
    dialog.setWindowTitle(u"Eigenschaften von %1"_s.arg(file.fileName()));

    auto* const rows = new QFormLayout;
    rows->setHorizontalSpacing(16);
    rows->setVerticalSpacing(6);
    const auto addRow = [&](const QString& name, const QString& value) {
        auto* const label = new QLabel(value, &dialog);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        rows->addRow(name, label);
    };
    addRow(u"Name:"_s, file.fileName());
    addRow(u"Ordner:"_s, file.path());
    addRow(u"Art:"_s, QMimeDatabase().mimeTypeForFile(file).name());
    addRow(u"Größe:"_s, sizeText(file.size()));
    addRow(u"Geändert:"_s, timeText(file.lastModified()));
    addRow(u"Letzter Zugriff:"_s, timeText(file.lastRead()));
    addRow(u"Rechte:"_s, rightsText(file));

    auto* const buttons = new QDialogButtonBox(&dialog);
    QPushButton* const close = buttons->addButton(u"&Schließen"_s, QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    auto* const layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addLayout(rows);
    layout->addStretch();
    layout->addWidget(buttons);
    dialog.resize(440, dialog.sizeHint().height());
    dialog.exec();
}

} // namespace orvantine
