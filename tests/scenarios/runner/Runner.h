#pragma once

#include <QByteArray>
#include <QStringList>

namespace orvantine::scenario {

struct FileResult
{
    int scenarios = 0;
    int failed = 0;
    /// What is printed, in order.
    QStringList texts;
    [[nodiscard]] bool passed() const { return failed == 0; }
};

/// Runs the scenarios of one file, each on a machine of its own. A file with a mistake of form runs none and has
/// failed.
[[nodiscard]] FileResult runFile(const QString& name, const QByteArray& bytes, bool printsAll = false);

/// The program: files and "--print"; 0 if all is as expected, 1 if not, 2 for a wrong call.
[[nodiscard]] int runProgram(const QStringList& arguments, QStringList& output);

} // namespace orvantine::scenario
