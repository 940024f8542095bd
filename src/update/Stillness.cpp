#include "update/Stillness.h"

#include "platform/Clock.h"

#include <chrono>
#include <map>
#include <thread>

namespace lumivane {

namespace {

constexpr std::chrono::milliseconds betweenLooks(200);

struct FirstLooks
{
    std::chrono::steady_clock::time_point time;
    std::map<QString, FileStamp> files;
};

FirstLooks& firstLooks()
{
    static FirstLooks looks;
    return looks;
}

std::function<void(int)>& thePause()
{
    static std::function<void(int)> pause;
    return pause;
}

} // namespace

int untilGrown(const FileStamp& stamp)
{
    // In whole seconds, as times are stored.
    const qint64 age = Clock::now().toMSecsSinceEpoch() - stamp.modified / 1'000'000'000 * 1000;
    return age >= 0 && age < youth ? static_cast<int>(youth - age) : 0;
}

void lookAt(const QStringList& paths)
{
    firstLooks() = {};
    for (const QString& path : paths)
        firstLooks().files.emplace(path, FileStamp::of(path));
    firstLooks().time = std::chrono::steady_clock::now();
}

bool isLookedAt(const QString& path, const FileStamp& stamp)
{
    const auto look = firstLooks().files.find(path);
    return look != firstLooks().files.end() && look->second == stamp;
}

bool staysAsItWas(const QString& path, const FileStamp& firstLook)
{
    using namespace std::chrono;
    auto rest = betweenLooks;
    if (isLookedAt(path, firstLook))
        rest -= duration_cast<milliseconds>(steady_clock::now() - firstLooks().time);
    if (rest.count() > 0)
        pauseFor(int(rest.count()));
    return FileStamp::of(path) == firstLook;
}

void setPause(std::function<void(int milliseconds)> pause)
{
    thePause() = std::move(pause);
}

void pauseFor(int milliseconds)
{
    if (thePause())
        thePause()(milliseconds);
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace lumivane
