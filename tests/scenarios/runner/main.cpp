#include "runner/Runner.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList output;
    const int code = orvantine::scenario::runProgram(QCoreApplication::arguments().mid(1), output);
    for (const QString& line : output)
        std::puts(line.toUtf8().constData());
    return code;
}
