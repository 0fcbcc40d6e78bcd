#include "desktop/qt/services/QtMessages.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int WidestText = 560;

struct Choice
{
    Answer answer;
    QString caption;
    QMessageBox::ButtonRole role;
};

/// In the order of their importance; the last one is what closing the box means.
std::vector<Choice> choices(MessageButtons buttons)
{
    const Choice ok{Answer::Ok, u"OK"_s, QMessageBox::AcceptRole};
    const Choice cancel{Answer::Cancel, u"Abbrechen"_s, QMessageBox::RejectRole};
    const Choice yes{Answer::Yes, u"&Ja"_s, QMessageBox::YesRole};
    const Choice no{Answer::No, u"&Nein"_s, QMessageBox::NoRole};
    const Choice retry{Answer::Retry, u"&Wiederholen"_s, QMessageBox::AcceptRole};
    switch (buttons) {
    case MessageButtons::Ok:
        return {ok};
    case MessageButtons::OkCancel:
        return {ok, cancel};
    case MessageButtons::AbortRetryIgnore:
        return {retry,
                {Answer::Ignore, u"&Ignorieren"_s, QMessageBox::DestructiveRole},
                {Answer::Abort, u"&Abbrechen"_s, QMessageBox::RejectRole}};
    case MessageButtons::YesNoCancel:
        return {yes, no, cancel};
    case MessageButtons::YesNo:
        return {yes, no};
    case MessageButtons::RetryCancel:
        return {retry, cancel};
    }
    return {ok};
}

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A line of the text stays a line where that does no harm.
void widen(QMessageBox& box)
{
    QLabel* const label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (label == nullptr)
        return;
    int widest = 0;
    const QStringList lines = box.text().split(u'\n');
    for (const QString& line : lines)
        widest = std::max(widest, label->fontMetrics().horizontalAdvance(line.trimmed()));
    label->setMinimumWidth(std::min(widest + 8, WidestText));
}

} // namespace

QWidget* frontWindow()
{
    if (QWidget* const modal = QApplication::activeModalWidget(); modal != nullptr)
        return modal;
    return QApplication::activeWindow();
}

Answer QtMessages::show(const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons)
{
    QMessageBox box(frontWindow());
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setWindowTitle(title);
    box.setIcon(iconOf(icon));

    const std::vector<Choice> offered = choices(buttons);
    std::vector<QPushButton*> made;
    made.reserve(offered.size());
    for (const Choice& choice : offered)
        made.push_back(box.addButton(choice.caption, choice.role));
    box.setDefaultButton(made.front());
    box.setEscapeButton(made.back());
    widen(box);
    box.exec();

    for (std::size_t i = 0; i < made.size(); ++i)
        if (box.clickedButton() == made[i])
            return offered[i].answer;
    return offered.back().answer;
}

QString QtMessages::input(const QString& prompt, const QString& title, const QString& defaultText)
{
    QInputDialog box(frontWindow());
    box.setInputMode(QInputDialog::TextInput);
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setTextValue(defaultText);
    box.setOkButtonText(u"OK"_s);
    box.setCancelButtonText(u"Abbrechen"_s);
    box.resize(420, box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

void QtMessages::beep()
{
    QApplication::beep();
}

} // namespace orvantine
