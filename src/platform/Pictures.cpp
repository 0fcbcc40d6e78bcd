#include "platform/Pictures.h"

#include <QFile>

namespace orvantine {

using namespace Qt::StringLiterals;

QByteArray pictureResource(const QString& type, int number)
{
    QFile picture(u":/%1/%2"_s.arg(type).arg(number));
    return picture.open(QFile::ReadOnly) ? picture.readAll() : QByteArray();
}

} // namespace orvantine
