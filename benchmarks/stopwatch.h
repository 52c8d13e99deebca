#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace tracksmith::benchmarks {

/// Seconds that `work` takes.
template <typename Work>
double Seconds(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Times of one operation over several rounds.
class Series {
public:
    template <typename Work>
    void Measure(Work&& work) {
        seconds_.push_back(Seconds(work));
    }
    /// The median of the rounds.
    double Median() const {
        std::vector<double> sorted = seconds_;
        std::sort(sorted.begin(), sorted.end());
        return sorted.empty() ? 0 : sorted[sorted.size() / 2];
    }

private:
    std::vector<double> seconds_;
};

} // namespace tracksmith::benchmarks
