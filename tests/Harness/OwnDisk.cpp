#include "Harness/OwnDisk.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Harness {

namespace {

constexpr int notAllowedCode = 77;

bool mountOwn(const std::filesystem::path& folder, const std::string& options)
{
    const auto user = std::to_string(geteuid());
    const auto group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
    return mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

} // namespace

void onOwnDisk(const std::filesystem::path& folder, const std::string& options,
    const std::function<void()>& test)
{
    const auto child = fork();
    if (child == 0) {
        if (!mountOwn(folder, options))
            _exit(notAllowedCode);
        test();
        static_cast<void>(std::fflush(stdout));
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_TRUE(child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status));
    if (WEXITSTATUS(status) == notAllowedCode)
        GTEST_SKIP() << "This machine gives its users no file systems of their own.";
    EXPECT_EQ(WEXITSTATUS(status), 0) << "told above";
}

bool makeReadOnly(const std::filesystem::path& folder)
{
    return mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
}

} // namespace Harness
