#include "Ratios.h"

#include <algorithm>
#include <cstdio>

namespace Lumenote::Bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration)
            continue;
        const std::string& name = run.run_name.function_name;
        const auto slash = name.find('/');
        const std::string subject = name.substr(0, slash);
        if (std::ranges::find(m_subjects, subject) == m_subjects.end())
            m_subjects.push_back(subject);
        auto& all = m_measured[subject];
        const std::string way = name.substr(slash + 1);
        auto same = std::ranges::find(all, way, &Measured::way);
        const double processor = run.GetAdjustedCPUTime();
        const double wall = run.GetAdjustedRealTime();
        if (same == all.end())
            same = all.insert(all.end(), {way, processor, wall});
        same->processorMs = std::min(same->processorMs, processor);
        same->wallMs = std::min(same->wallMs, wall);
        const auto bytes = run.counters.find("bytes");
        if (bytes != run.counters.end())
            same->bytes = bytes->second;
    }
}

void RatioReporter::Finalize()
{
    std::printf("\n| subject | way | CPU ms | times as fast | wall ms | times as fast | size |\n"
                "|---|---|---|---|---|---|---|\n");
    for (const std::string& subject : m_subjects) {
        const auto& all = m_measured[subject];
        const Measured& first = all.front();
        for (const Measured& each : all) {
            std::printf("| %s | %s | %.1f | %.1f | %.1f | %.1f | ", subject.c_str(),
                each.way.c_str(), each.processorMs, first.processorMs / each.processorMs,
                each.wallMs, first.wallMs / each.wallMs);
            if (each.bytes > 0)
                std::printf("%.2f", each.bytes / first.bytes);
            std::printf(" |\n");
        }
    }
}

} // namespace Lumenote::Bench
