#pragma once

#include <cstdio>
#include <string>

namespace tracksmith::benchmarks {

/// Prints one line per figure with its budget and whether it is kept.
class BudgetTable {
public:
    void Heading(const std::string& text) { std::printf("\n%s\n", text.c_str()); }

    /// A figure without a budget.
    void Row(const char* name, double value, const char* unit) {
        std::printf("  %-44s %9.2f %s\n", name, value, unit);
    }
    /// A figure that must not exceed `budget`.
    void AtMost(const char* name, double value, double budget, const char* unit) {
        Print(name, value, "<=", budget, value <= budget, unit);
    }
    /// A figure that must reach `budget`.
    void AtLeast(const char* name, double value, double budget, const char* unit) {
        Print(name, value, ">=", budget, value >= budget, unit);
    }

    /// Number of budgets that were not kept.
    int Over() const { return over_; }

private:
    void Print(const char* name, double value, const char* sign, double budget, bool kept,
               const char* unit) {
        std::printf("  %-44s %9.2f %-22s %s %5.2f  %s\n", name, value, unit, sign, budget,
                    kept ? "ok" : "OVER");
        over_ += kept ? 0 : 1;
    }

    int over_ = 0;
};

} // namespace tracksmith::benchmarks
