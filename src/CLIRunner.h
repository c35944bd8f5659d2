#pragma once

#include <filesystem>

namespace Lumenote {

class OCRService;

}

namespace Platform {
class DisplayServer;
struct Error;
} // namespace Platform

/// The modes of the command line. Each ends the process with an exit code of its own, and none
/// returns: results on standard output, everything else on standard error.
namespace Lumenote::CLIRunner {

enum ExitCode {
    succeeded = 0,
    loopReturned = 1, ///< The main loop came back by itself, which it never should.
    wrongUsage = 64,
    noImage = 66, ///< The file can't be read or decoded as an image.
    failed = 70, ///< The warm-up or the capture didn't end well.
    noDisplay = 69, ///< The desktop program found no display server, or lost it.
    notWritten = 74, ///< Standard output didn't take the result.
    unfinished = 75, ///< Recognition didn't finish.
    notPermitted = 77, ///< The screen may not be captured.
};

/// `--ocr <image>`: prints the text of the image at @p path, the bytes as they were given.
[[noreturn]] void run(const std::filesystem::path& path, OCRService& service);

/// `--ocr` without a path.
[[noreturn]] void usage();

/// `--self-test`: whether the screen can be captured. In an application on the display of @p
/// server.
[[noreturn]] void selfTest(Platform::DisplayServer& server);

/// `--self-test` where there is no display server, for the reason in @p error.
[[noreturn]] void selfTest(const Platform::Error& error);

/// `--version`.
[[noreturn]] void version();

/// `--warm-up`: whether the recogniser answers.
[[noreturn]] void warmUp(OCRService& service);

/// No mode at all, which is the desktop program, where there is no display server for it, or none
/// any more.
[[noreturn]] void noDisplayServer(const Platform::Error& error);

} // namespace Lumenote::CLIRunner
