#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace Lumenote::Bench {

/// Prints what is measured as it comes, and at the end a table for each subject: of all its ways,
/// the time, how many times as fast as the first one it is, and the ratio of its bytes.
///
/// Benchmarks are named "subject/way"; the counter "bytes" is optional. Of repetitions the fastest
/// counts: whatever else runs on the machine only ever adds.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Measured {
        std::string way;
        double processorMs = 0;
        double wallMs = 0;
        double bytes = 0;
    };

    std::vector<std::string> m_subjects; ///< In the order they were run in.
    std::map<std::string, std::vector<Measured>> m_measured;
};

} // namespace Lumenote::Bench
