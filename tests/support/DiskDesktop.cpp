#include "support/DiskDesktop.h"

#include "shell/Assemble.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

DiskDesktop::DiskDesktop(const QString& where, const MakeTags& makeTags)
    : folder(where),
      files({.recoveryFolder = where + u"/recovery"_s, .carriesBeside = false}),
      player(files, [](const QString&) { return true; }),
      infoPlayer(files, [](const QString&) { return true; }),
      tags(makeTags ? makeTags(files) : std::make_unique<FakeTags>(log)),
      zip(files, where + u"/recovery"_s),
      earlierVersions(where + u"/recovery"_s),
      services{files,  profiles, settings, messages, choosers,        forms,    events,  player,   infoPlayer,
               mixer,  sound,    *tags,    tray,     clipboard,       launcher, volumes, instance, fonts,
               screen, walks,    priority, zip,      earlierVersions, {},       {},      {}},
      root(services)
{
    assemble(root);
    services.folders.program = path(u"program"_s);
    services.folders.applicationData = folder;
    root.tDatenbank.Text = path(u"data/"_s);
}

} // namespace orvantine::fake
