#include "search/FileAfterFile.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

bool changeAlone(Root& root, const std::function<bool()>& steps)
{
    bool done = false;
    std::optional<WriteFault> fault;
    {
        const PartChange alone(root.files);
        if (!steps())
            root.files.failWhole();
        done = !root.files.wholeFailed();
        fault = root.files.takeFault();
    }
    if (fault)
        root.files.noteFault(*fault);
    return done;
}

QString backupOfList(const QString& path)
{
    constexpr int Ending = 3;
    return path.size() < Ending ? QString() : path.chopped(Ending) + u"bak"_s;
}

} // namespace orvantine
