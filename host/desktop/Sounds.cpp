// A damped tone for each sound. A machine without a device stays silent.
#include "Sounds.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

namespace lampblack::host {

namespace {

constexpr int kRate = 44100;   // samples a second
constexpr double kTail = 0.15; // seconds that a device may need to play out what it was given

std::vector<int16_t> Tone(double inHertz, double inSeconds, double inLoudness)
{
    std::vector<int16_t> samples(static_cast<size_t>(inSeconds * kRate));
    for (size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / kRate;
        const double attack = std::min(1.0, time * 500), decay = std::exp(-5 * time / inSeconds);
        const double wave = std::sin(2 * std::numbers::pi * inHertz * time);
        samples[i] = static_cast<int16_t>(32767 * inLoudness * attack * decay * wave);
    }
    return samples;
}

bool HasPlaybackDevice(const std::filesystem::path& inFolder)
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(inFolder, error))
        if (const std::string name = entry.path().filename(); name.starts_with("pcm") && name.ends_with("p"))
            return true;
    return false;
}

// Whether opening can succeed. A sound library that finds nothing would complain on the user's terminal.
bool CanBeHeard()
{
    if (getenv("SDL_AUDIODRIVER") || getenv("PULSE_SERVER"))
        return true;
    std::error_code error;
    if (const char* folder = getenv("XDG_RUNTIME_DIR"))
        for (const char* socket : { "pulse/native", "pipewire-0" })
            if (std::filesystem::exists(std::filesystem::path(folder) / socket, error))
                return true;
    return HasPlaybackDevice("/dev/snd");
}

SDL_AudioDeviceID OpenDevice()
{
    if (!CanBeHeard())
        return 0;
    SDL_AudioSpec wanted = {};
    wanted.freq = kRate;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = 1;
    wanted.samples = 1024;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return 0;
    const SDL_AudioDeviceID device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (!device)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return device;
}

} // namespace

void Sounds::Beep(double inNow)
{
    Play(inNow, 660, 0.25, 0.4);
}

void Sounds::Tick(double inNow)
{
    Play(inNow, 1400, 0.03, 0.2);
}

void Sounds::Play(double inNow, double inHertz, double inSeconds, double inLoudness)
{
    if (!fDevice)
        fDevice = OpenDevice();
    if (!fDevice)
        return;
    const std::vector<int16_t> samples = Tone(inHertz, inSeconds, inLoudness);
    SDL_ClearQueuedAudio(fDevice); // the newest sound is the one to hear
    SDL_QueueAudio(fDevice, samples.data(), static_cast<Uint32>(samples.size() * sizeof(int16_t)));
    SDL_PauseAudioDevice(fDevice, 0);
    fEnd = inNow + inSeconds + kTail;
}

void Sounds::CloseIfOver(double inNow)
{
    if (!fDevice || inNow < fEnd)
        return;
    SDL_CloseAudioDevice(fDevice);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    fDevice = 0;
    fEnd = kForever;
}

} // namespace lampblack::host
