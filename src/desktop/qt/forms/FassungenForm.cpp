#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/CoverPicture.h"
#include "desktop/qt/widgets/ReportList.h"
#include "transfer/Fassungen.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A cover in its own shape, or words in the place of one that cannot be shown.
class Picture final : public QWidget
{
public:
    explicit Picture(QWidget* parent) : QWidget(parent)
    {
        setMinimumSize(240, 240);
        setFocusPolicy(Qt::StrongFocus);
    }

    void show(const QByteArray& bytes)
    {
        m_picture = bytes.isEmpty() || bytes.size() > LargestCoverFile ? QImage() : coverPicture(bytes);
        setAccessibleDescription(
            m_picture.isNull() ? u"Kein Bild"_s : u"%1 mal %2 Punkte"_s.arg(m_picture.width()).arg(m_picture.height()));
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        if (m_picture.isNull()) {
            painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                             u"Diese Fassung ist kein Bild, das gezeigt werden kann."_s);
            return;
        }
        QRect place(QPoint(), m_picture.size().scaled(size(), Qt::KeepAspectRatio).expandedTo({1, 1}));
        place.moveCenter(rect().center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, m_picture);
    }

private:
    QImage m_picture;
};

ReportList* addReport(FormWindow& window, ListView& list, const QString& accessibleName, int numberColumn)
{
    auto* const report = new ReportList(list, &window);
    report->setAccessibleName(accessibleName);
    report->setNumberColumn(numberColumn);
    return report;
}

} // namespace

void buildFassung(FormWindow& window)
{
    auto& form = static_cast<Fassung&>(window.form());

    window.content().addWidget(window.addLabel(form.LKopf));
    auto* const text = new QPlainTextEdit(&window);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setMinimumSize(520, 300);
    window.addControl(form.tInhalt, text, u"Inhalt der Fassung"_s);
    window.bindings().follow(form.tInhalt.Text, [text](const QString& content) { text->setPlainText(content); });
    window.content().addWidget(text, 1);
    auto* const picture = new Picture(&window);
    window.addControl(form.pBild, picture, u"Bild der Fassung"_s);
    window.bindings().follow(form.Bytes, [picture](const QByteArray& bytes) { picture->show(bytes); });
    window.content().addWidget(picture, 1);

    QPushButton* const close = window.addButton(form.bAbbrechen);
    close->setDefault(true);
    window.setCancel(close);
    window.addButtons({}, {close});
    (form.tInhalt.Visible.value() ? static_cast<QWidget*>(text) : picture)->setFocus();
}

void buildFassungen(FormWindow& window)
{
    constexpr int CountColumn = 3;
    auto& form = static_cast<Fassungen&>(window.form());

    QLineEdit* const filter = window.addTextBox(form.tFilter, u"Filter"_s);
    filter->setPlaceholderText(u"Teil des Namens oder des Pfads"_s);
    filter->setClearButtonEnabled(true);
    // The button that clears it is no edit by key.
    QObject::connect(filter, &QLineEdit::textChanged, &window, [&form](const QString& text) {
        if (form.tFilter.Text.value() == text)
            return;
        form.tFilter.Text = text;
        form.tFilter.Change();
    });
    ReportList* const files = addReport(window, form.LDateien, u"Dateien mit früheren Fassungen"_s, CountColumn);
    files->setMinimumSize(720, 90);
    ReportList* const versions = addReport(window, form.LFassungen, u"Fassungen der Datei"_s, CountColumn);
    versions->setMinimumSize(720, 90);

    auto* const head = new QGridLayout;
    head->setHorizontalSpacing(12);
    head->setVerticalSpacing(8);
    head->setColumnStretch(1, 1);
    head->addWidget(window.addLabel(form.LFilter, filter), 0, 0);
    head->addWidget(filter, 0, 1);
    window.content().addLayout(head);
    window.content().addWidget(window.addLabel(form.LDateienCaption, files));
    window.content().addWidget(files, 1);
    QLabel* const path = window.addLabel(form.LPfad);
    path->setWordWrap(false);
    path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    window.content().addWidget(path);
    window.content().addWidget(window.addLabel(form.LFassungenCaption, versions));
    window.content().addWidget(versions, 1);
    QLabel* const came = window.addStatus(form.LMeldung);
    came->setMinimumHeight(came->fontMetrics().lineSpacing());
    window.content().addWidget(came);
    window.content().addWidget(window.addLabel(form.LPlatz));

    QPushButton* const look = window.addButton(form.bAnsehen);
    QPushButton* const bringBack = window.addButton(form.bZurückholen);
    QPushButton* const save = window.addButton(form.bSpeichernUnter);
    QPushButton* const close = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    for (QPushButton* button : {look, bringBack, save, close, help})
        button->setAutoDefault(false);
    window.setCancel(close);
    window.addButtons({help}, {look, bringBack, save, close});
    files->setFocus();
}

} // namespace orvantine
