#pragma once

#include <filesystem>

namespace Lumenote {

class OCRService;

/// The modes of the command line. Each ends the process with an exit code of its own, and none
/// returns: results on standard output, everything else on standard error.
namespace CLIRunner {

enum ExitCode {
    succeeded = 0,
    loopReturned = 1, ///< The main loop came back by itself, which it never should.
    wrongUsage = 64,
    noImage = 66, ///< The file can't be read or decoded as an image.
    failed = 70, ///< The warm-up didn't end well.
    notWritten = 74, ///< Standard output didn't take the result.
    unfinished = 75, ///< Recognition didn't finish.
};

/// `--ocr <image>`: prints the text of the image at @p path, the bytes as they were given.
[[noreturn]] void run(const std::filesystem::path& path, OCRService& service);

/// `--ocr` without a path.
[[noreturn]] void usage();

/// `--self-test`: whether the screen can be captured, which no build can as yet.
[[noreturn]] void selfTest();

/// `--version`.
[[noreturn]] void version();

/// `--warm-up`: whether the recogniser answers.
[[noreturn]] void warmUp(OCRService& service);

/// No mode at all: the desktop program, which is not there as yet.
[[noreturn]] void noMode();

} // namespace CLIRunner

} // namespace Lumenote
