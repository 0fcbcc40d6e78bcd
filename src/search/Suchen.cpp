#include "search/Suchen.h"

namespace orvantine {

using namespace Qt::StringLiterals;

Suchen::Suchen() : Form(u"Suchen"_s)
{
    Caption = u" Suchen"_s;
    Label1.Caption = u"Suchen nach:"_s;
    Frame1.Caption = u"Suchrichtung"_s;
    OVorwärts.Caption = u"vorwärts "_s;
    ORückwärts.Caption = u"rückwärts "_s;
    OVorwärts.Value = true;
    bIndexFinder.Caption = u"S&chnellsuche / Indexsuche "_s;
    LIndexKey.Caption = u"INDEX"_s;
    CSuchen.Caption = u"&Suchen"_s;
    CSuchen.Enabled = false;
    CAbbrechen.Caption = u"&Abbrechen"_s;
}

} // namespace orvantine
