#include "app/AudioTypes.h"

namespace orvantine::AudioTypes {

bool isDropped(QStringView path)
{
    return path.endsWith(u".mp3", Qt::CaseInsensitive) || path.endsWith(u".wma", Qt::CaseInsensitive) ||
           path.endsWith(u".wav", Qt::CaseInsensitive);
}

bool isPasted(QStringView path)
{
    return path.endsWith(u"mp3") || path.endsWith(u"wma") || path.endsWith(u"wav");
}

bool endsInMp3(QStringView name)
{
    return name.endsWith(u"mp3", Qt::CaseInsensitive);
}

} // namespace orvantine::AudioTypes
