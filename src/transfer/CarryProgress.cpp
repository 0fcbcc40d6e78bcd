#include "transfer/CarryProgress.h"

#include "app/Root.h"
#include "transfer/Kopieren.h"

#include <QLocale>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Nobody reads faster, and a screen reader tells each text.
constexpr qint64 MillisecondsBetweenTexts = 200;
/// The speed is measured over so long.
constexpr qint64 MillisecondsOfMeasure = 2000;

QString number(double value, int digits)
{
    return QLocale(QLocale::German, QLocale::Germany).toString(value, 'f', digits);
}

} // namespace

QString bytesText(qint64 bytes)
{
    constexpr double Step = 1024;
    if (bytes < 1024)
        return number(static_cast<double>(bytes), 0) + u" Byte"_s;
    double value = static_cast<double>(bytes) / Step;
    for (const QString& unit : {u" KB"_s, u" MB"_s}) {
        if (value < Step)
            return number(value, 1) + unit;
        value /= Step;
    }
    return number(value, 1) + u" GB"_s;
}

QString timeLeftText(qint64 seconds)
{
    constexpr qint64 Minute = 60;
    constexpr qint64 Hour = 60 * Minute;
    const auto about = [](qint64 count, const QString& one, const QString& many) {
        return u"noch etwa %1 %2"_s.arg(count).arg(count == 1 ? one : many);
    };
    if (seconds >= 2 * Hour)
        return about((seconds + Hour / 2) / Hour, u"Stunde"_s, u"Stunden"_s);
    if (seconds >= 90)
        return about((seconds + Minute / 2) / Minute, u"Minute"_s, u"Minuten"_s);
    return about(std::max<qint64>(seconds, 1), u"Sekunde"_s, u"Sekunden"_s);
}

CarryProgress::CarryProgress(Root& root, std::optional<qint64> total)
    : m_root(root), m_total(total), m_since(root.services.events.now())
{
    Kopieren& form = *root.kopieren;
    form.pFortschritt.Max = BarLength;
    form.pFortschritt.Value = 0;
    for (Label* const label : {&form.LDatei, &form.LMenge, &form.LTempo})
        label->Visible = true;
    form.pFortschritt.Visible = true;
    tell(true);
}

CarryProgress::~CarryProgress()
{
    hideProgress(*m_root.kopieren);
}

void CarryProgress::setSteps(int begun, int all)
{
    m_step = all > 0 ? 1.0 / all : 0;
    m_stepsOver = std::max(begun - 1, 0) * m_step;
}

void CarryProgress::beginFile(const QString& name, qint64 size)
{
    m_root.kopieren->LDatei.Caption = name;
    m_size = size;
    m_done = 0;
}

void CarryProgress::show(qint64 done)
{
    m_done = std::clamp<qint64>(done, 0, m_size);
    tell(false);
}

void CarryProgress::endFile()
{
    m_over += m_size;
    m_size = 0;
    m_done = 0;
    tell(false);
}

void CarryProgress::showWork(qint64 done, qint64 total)
{
    if (m_total != total) {
        m_total = total;
        m_over = 0;
        m_since = m_root.services.events.now();
        m_doneThen = 0;
        m_bytesPerSecond = 0;
        m_root.kopieren->LDatei.Caption = QString();
    }
    m_size = total;
    show(done);
}

void CarryProgress::complete()
{
    m_over = m_total.value_or(m_over + m_done);
    m_size = 0;
    m_done = 0;
    tell(true);
    m_root.kopieren->pFortschritt.Value = BarLength;
    m_root.kopieren->LTempo.Caption = QString();
}

void CarryProgress::tell(bool anyhow)
{
    const QDateTime now = m_root.services.events.now();
    if (!anyhow && m_told.isValid() && m_told.msecsTo(now) < MillisecondsBetweenTexts && m_told <= now)
        return;
    m_told = now;
    Kopieren& form = *m_root.kopieren;
    // Names and syncs are still to come: only the end fills the bar.
    constexpr int AlmostAll = BarLength - 1;
    form.pFortschritt.Value = std::min(static_cast<int>(share() * BarLength), AlmostAll);
    const QString done = bytesText(m_over + m_done);
    form.LMenge.Caption = m_total ? u"%1 von %2"_s.arg(done, bytesText(*m_total)) : done;
    form.LTempo.Caption = speed(now);
}

double CarryProgress::share() const
{
    const auto part = [](qint64 done, qint64 all) {
        return all > 0 ? static_cast<double>(done) / static_cast<double>(all) : 0;
    };
    return m_total ? part(m_over + m_done, *m_total) : m_stepsOver + m_step * part(m_done, m_size);
}

QString CarryProgress::speed(const QDateTime& now)
{
    const qint64 done = m_over + m_done;
    const qint64 passed = m_since.msecsTo(now);
    // A clock that was set back begins anew.
    if (passed < 0 || passed >= MillisecondsOfMeasure) {
        if (passed > 0)
            m_bytesPerSecond = static_cast<double>(done - m_doneThen) * 1000.0 / static_cast<double>(passed);
        m_since = now;
        m_doneThen = done;
    }
    if (m_bytesPerSecond < 1)
        return {};
    QString speed = bytesText(static_cast<qint64>(m_bytesPerSecond)) + u"/s"_s;
    if (!m_total)
        return speed;
    const auto left = static_cast<qint64>(static_cast<double>(*m_total - done) / m_bytesPerSecond);
    return speed + u", "_s + timeLeftText(left);
}

} // namespace orvantine
