// A running copy of the program as far as the history's folder is concerned, for tests to kill:
//
//   capture-copy list FOLDER LIMIT         loads, says "listed", and lives on
//   capture-copy record FOLDER             loads, and then records and trims as fast as it can
//   capture-copy record-with-names FOLDER  the same where files can't be without a name
//
// Says "image UUID" and "text UUID" after the store has said that it is written, and "trim UUID"
// before it removes a capture.

#include "Fakes/DiskFaults.h"
#include "Model/CaptureStore.h"
#include "Platform/Freedesktop/FreedesktopFileSystem.h"
#include "RecordedCapture.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string_view>
#include <unistd.h>

namespace {

using namespace Lumenote;

constexpr int limit = 30;

void say(const std::string& what)
{
    const auto line = what + '\n';
    if (write(STDOUT_FILENO, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        _exit(1);
}

/// False where the store could not do it.
bool recordOne(const CaptureStore& store, const CaptureIdentity& capture)
{
    const auto id = uuidText(capture.id);
    if (!store.write(RecordedCapture::picture(capture.id), store.fileFor(capture), 1))
        return false;
    say("image " + id);
    return std::ranges::all_of(std::array{1, 2}, [&](int which) {
        const bool isStored =
            store.writeText(RecordedCapture::text(capture.id, which), capture.id).has_value();
        if (isStored)
            say("text " + id);
        return isStored;
    });
}

int record(const CaptureStore& store)
{
    std::deque<CaptureIdentity> captures;
    QSet<QUuid> ids;
    for (const auto& stored : store.load(limit)) {
        captures.push_front({.id = stored.id, .capturedAt = stored.capturedAt});
        ids.insert(stored.id);
    }
    store.sweepOrphanedText(ids);
    say("listed");
    auto date = QDateTime::currentDateTimeUtc();
    if (!captures.empty())
        date = std::max(date, captures.back().capturedAt);
    while (true) {
        date = date.addMSecs(1);
        captures.push_back({.id = QUuid::createUuid(), .capturedAt = date});
        if (!recordOne(store, captures.back()))
            return 1;
        if (captures.size() > limit) {
            say("trim " + uuidText(captures.front().id));
            store.removeTrimmed(captures.front().id, store.fileFor(captures.front()));
            captures.pop_front();
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 64;
    const std::string_view mode = argv[1];
    const CaptureStore store(argv[2], std::make_shared<Platform::FreedesktopFileSystem>());
    if (mode == "list") {
        store.load(argc > 3 ? std::atoi(argv[3]) : limit);
        say("listed");
        return pause();
    }
    const Fakes::DiskFaults disk({.hasUnnamedFiles = mode != "record-with-names"});
    return record(store);
}
