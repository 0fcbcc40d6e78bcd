#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace orvantine {

struct Root;

/// A number of bytes as people read it: "0 Byte", "12,3 MB".
[[nodiscard]] QString bytesText(qint64 bytes);

/// "noch etwa 3 Minuten"
[[nodiscard]] QString timeLeftText(qint64 seconds);

/// What the dialog of a long command tells of its files: the one on its way, how much is done of all, how fast it goes
/// and how long it takes. The bar is full only when all that was to be done is done.
class CarryProgress
{
public:
    /// Shows bar and labels, over all bytes that are to be carried. Without a number of them the bar goes by steps.
    CarryProgress(Root& root, std::optional<qint64> total);
    ~CarryProgress();
    CarryProgress(const CarryProgress&) = delete;
    CarryProgress& operator=(const CarryProgress&) = delete;

    /// So many steps of all have begun; each file is one.
    void setSteps(int begun, int all);

    void beginFile(const QString& name, qint64 size);
    /// So many bytes of the present file are on the medium.
    void show(qint64 done);
    /// It is over, carried or not.
    void endFile();
    /// Work of another kind, which begins where nothing is done.
    void showWork(qint64 done, qint64 total);
    /// Everything is on the medium.
    void complete();

    static constexpr int BarLength = 1000;

private:
    void tell(bool anyhow);
    [[nodiscard]] double share() const;
    [[nodiscard]] QString speed(const QDateTime& now);

    Root& m_root;
    std::optional<qint64> m_total;
    double m_stepsOver = 0;
    double m_step = 0;
    /// Of the files that are over.
    qint64 m_over = 0;
    qint64 m_size = 0;
    qint64 m_done = 0;
    QDateTime m_told;
    /// Where the present measure of the speed began.
    QDateTime m_since;
    qint64 m_doneThen = 0;
    double m_bytesPerSecond = 0;
};

} // namespace orvantine
