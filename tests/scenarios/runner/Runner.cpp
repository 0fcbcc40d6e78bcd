#include "runner/Runner.h"

#include "runner/Run.h"

#include <QFile>

#include <algorithm>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

FileResult runFile(const QString& name, const QByteArray& bytes, bool printsAll)
{
    // File times are printed as local times.
    qputenv("TZ", "UTC");
    FileResult result;
    const ScenarioFile file = parse(name, bytes, syntaxOf);
    result.scenarios = static_cast<int>(file.scenarios.size());
    for (const Problem& problem : file.problems)
        result.texts += u"%1:%2: %3"_s.arg(name, QString::number(problem.line), problem.text);
    if (!file.problems.isEmpty()) {
        result.failed = std::max(result.scenarios, 1);
        return result;
    }
    for (const Scenario& scenario : file.scenarios) {
        Run run(file, {printsAll});
        const Outcome outcome = run.scenario(scenario);
        if (!outcome.passed)
            ++result.failed;
        if (!outcome.texts.isEmpty())
            result.texts += u"%1:%2: scenario %3%4"_s.arg(name, QString::number(scenario.line), scenario.title,
                                                          outcome.passed ? QString() : u": FAILED"_s);
        result.texts += outcome.texts;
    }
    return result;
}

int runProgram(const QStringList& arguments, QStringList& output)
{
    const bool printsAll = arguments.contains(u"--print"_s);
    QStringList names = arguments;
    names.removeAll(u"--print"_s);
    if (names.isEmpty() ||
        std::any_of(names.begin(), names.end(), [](const QString& name) { return name.startsWith(u'-'); })) {
        output += u"usage: orvanten-scenario [--print] FILE…"_s;
        return 2;
    }
    int scenarios = 0;
    int failed = 0;
    for (const QString& name : names) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            output += u"%1: cannot be read"_s.arg(name);
            return 2;
        }
        const FileResult result = runFile(name, file.readAll(), printsAll);
        output += result.texts;
        scenarios += result.scenarios;
        failed += result.failed;
    }
    output += u"%1 scenarios, %2 failed"_s.arg(scenarios).arg(failed);
    return failed == 0 ? 0 : 1;
}

} // namespace orvantine::scenario
