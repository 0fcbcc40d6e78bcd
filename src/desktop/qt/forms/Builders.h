#pragma once

#include <QString>

namespace orvantine {

class FormWindow;

/// Fills the window of a form with the widgets of its controls.
using FormBuilder = void (*)(FormWindow&);

/// By the form's name; null for a form without a window.
[[nodiscard]] FormBuilder formBuilder(const QString& name);

// One a form, each in a file of its own. A new form is declared here and entered in the table of Builders.cpp.
void buildDatenbank(FormWindow& window);
void buildDialoge(FormWindow& window);
void buildDirekthilfe(FormWindow& window);
void buildEigenschaften(FormWindow& window);
void buildErrorListe(FormWindow& window);
void buildFassung(FormWindow& window);
void buildFassungen(FormWindow& window);
void buildFolderCheck(FormWindow& window);
void buildFindAudio(FormWindow& window);
void buildFolderDialog(FormWindow& window);
void buildInfo(FormWindow& window);
void buildKopieren(FormWindow& window);
void buildOptionen(FormWindow& window);
void buildOtherTagForm(FormWindow& window);
void buildPositionen(FormWindow& window);
void buildStartup(FormWindow& window);
void buildSuchen(FormWindow& window);
void buildTagForm(FormWindow& window);
void buildTastatur(FormWindow& window);
void buildTrackcopy(FormWindow& window);

} // namespace orvantine
