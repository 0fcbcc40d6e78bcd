#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "search/Suchen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int FieldWidth = 320;
constexpr int ProgressLines = 2;

} // namespace

void buildSuchen(FormWindow& window)
{
    auto& form = static_cast<Suchen&>(window.form());

    QComboBox* const text = window.addComboBox(form.Text1, u"Suchen nach"_s, true);
    text->setMinimumWidth(FieldWidth);
    // A long text of the history must not make the dialog as wide as itself.
    text->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* const row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(window.addLabel(form.Label1, text));
    row->addWidget(text, 1);
    window.content().addLayout(row);

    auto* const frame = new QGroupBox(form.Frame1.Caption, &window);
    frame->setObjectName(form.Frame1.fullName());
    auto* const options = new QHBoxLayout(frame);
    options->setSpacing(24);
    options->addWidget(window.addOption(form.OVorwärts, frame));
    options->addWidget(window.addOption(form.ORückwärts, frame));
    options->addStretch();
    window.content().addWidget(frame);

    QLabel* const key = window.addLabel(form.LIndexKey);
    key->setEnabled(false);
    auto* const quick = new QHBoxLayout;
    quick->addWidget(window.addCheckBox(form.bIndexFinder));
    quick->addStretch();
    quick->addWidget(key);
    window.content().addLayout(quick);

    QLabel* const progress = window.addStatus(form.progress);
    progress->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    progress->setMinimumHeight(ProgressLines * QFontMetrics(progress->font()).lineSpacing());
    // The name of a list must not make the dialog as wide as itself.
    progress->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    window.content().addWidget(progress);
    window.content().addStretch();

    QPushButton* const search = window.addButton(form.CSuchen);
    QPushButton* const cancel = window.addButton(form.CAbbrechen);
    cancel->setAutoDefault(false);
    search->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {search, cancel});
    text->setFocus();
}

} // namespace orvantine
