#include "shell/Info.h"

#include "app/Root.h"

#include <QUrl>
#include <QUrlQuery>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString versionText(const StartContext& start)
{
    return u"%1.%2.%3 Build %4"_s.arg(start.versionMajor)
        .arg(start.versionMinor)
        .arg(start.versionRevision)
        .arg(start.build);
}

void openLink(Root& root, const QString& link)
{
    root.services.launcher.start({.kind = LaunchKind::Link, .command = link, .target = link, .arguments = {}});
}

} // namespace

Info::Info() : Form(u"Info"_s)
{
    Caption = u" Info über Orvanten Manager"_s;
    BMail.Caption = u"&E-Mail"_s;
    BWebseite.Caption = u"&Webseite"_s;
    BAbbrechen.Caption = u"&Abbrechen"_s;
}

void setUpInfo(Root& root)
{
    Info& form = *root.info;
    form.Load = [&root, &form] {
        form.RName.Caption = u"Orvanten Manager"_s;
        form.RVersion.Caption = versionText(root.services.start);
        form.RWerbung.Caption = u"Playlisten verwalten, abspielen und mitnehmen: bis zu 160 Wiedergabelisten, ihre "
                                u"Sounddateien, Cover und Beschreibungen in einem Fenster."_s;
        form.RContact.Caption = u"Freie Software unter der GNU General Public License, Version 3 oder neuer.\n"
                                u"Fragen und Anregungen: info@orvanten.example"_s;
    };
    form.BMail.Click = [&root] {
        QUrl link(u"mailto:info@orvanten.example"_s);
        QUrlQuery query;
        query.addQueryItem(u"Subject"_s, u"Orvanten Manager "_s + versionText(root.services.start));
        query.addQueryItem(u"Body"_s, u"Guten Tag,"_s);
        link.setQuery(query);
        openLink(root, link.toString(QUrl::FullyEncoded));
    };
    form.BWebseite.Click = [&root] { openLink(root, u"https://orvanten.example/"_s); };
    form.BAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
}

} // namespace orvantine
