#include "SoundContract.h"
#include "support/FakeDevices.h"

namespace orvantine::fake {

namespace {

class FakeWorld : public SoundWorld
{
public:
    MixerDevice& mixer() override { return m_mixer; }
    SoundOutput& sound() override { return m_sound; }
    void turnElsewhere(long level) override { m_mixer.lines[4].level = level; }
    void setRunning(bool running) override
    {
        m_mixer.present = running;
        m_sound.devices = running ? 1 : 0;
    }
    void removeSinks() override
    {
        m_mixer.lines.clear();
        m_sound.devices = 0;
    }

private:
    CallLog m_log;
    FakeMixer m_mixer{m_log};
    FakeSound m_sound{m_log};
};

INSTANTIATE_TEST_SUITE_P(Fake, SoundContract,
                         testing::Values(SoundFactory{"Fake", [] { return std::make_unique<FakeWorld>(); }}),
                         SoundContract::nameOf);

} // namespace

} // namespace orvantine::fake
