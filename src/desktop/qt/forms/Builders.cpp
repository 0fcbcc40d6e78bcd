#include "desktop/qt/forms/Builders.h"

#include <QHash>

namespace orvantine {

using namespace Qt::StringLiterals;

FormBuilder formBuilder(const QString& name)
{
    static const QHash<QString, FormBuilder> builders{{u"Datenbank"_s, buildDatenbank},
                                                      {u"Dialoge"_s, buildDialoge},
                                                      {u"Eigenschaften"_s, buildEigenschaften},
                                                      {u"ErrorListe"_s, buildErrorListe},
                                                      {u"Fassung"_s, buildFassung},
                                                      {u"Fassungen"_s, buildFassungen},
                                                      {u"FolderCheck"_s, buildFolderCheck},
                                                      {u"FilesCopy"_s, buildFolderDialog},
                                                      {u"FindAudio"_s, buildFindAudio},
                                                      {u"Kopieren"_s, buildKopieren},
                                                      {u"Info"_s, buildInfo},
                                                      {u"Ordner"_s, buildFolderDialog},
                                                      {u"Positionen"_s, buildPositionen},
                                                      {u"Startup"_s, buildStartup},
                                                      {u"Suchen"_s, buildSuchen},
                                                      {u"Trackcopy"_s, buildTrackcopy},
                                                      {u"frmID3V1"_s, buildTagForm},
                                                      {u"frmID3V2"_s, buildOtherTagForm},
                                                      {u"Direkthilfe"_s, buildDirekthilfe},
                                                      {u"Optionen"_s, buildOptionen},
                                                      {u"Tastatur"_s, buildTastatur}};
    return builders.value(name);
}

} // namespace orvantine
