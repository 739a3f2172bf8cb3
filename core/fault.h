#pragma once

#include <stdexcept>
#include <string>

namespace varo {

enum class FaultKind { DivisionByZero, InvalidArgument, Overflow, IndexOutOfRange };

// The user-facing description of a fault kind, appended to the calculation messages.
const char* FaultText(FaultKind kind);

// Thrown by the checked operations below; caught at the boundary of the routine that owns the
// operation, which then takes its own failure path.
class ArithmeticFault : public std::runtime_error {
  public:
    explicit ArithmeticFault(FaultKind kind) : std::runtime_error(FaultText(kind)), kind_(kind) {}
    FaultKind kind() const { return kind_; }

  private:
    FaultKind kind_;
};

// Checked arithmetic: each either returns a finite result or throws ArithmeticFault.
double CheckedDivide(double numerator, double denominator);
double CheckedSqrt(double x);
double CheckedLog(double x);  // natural logarithm
double CheckedLog10(double x);
double CheckedExp(double x);
double CheckedFinite(double x);  // NaN -> InvalidArgument, infinity -> Overflow
int CheckedIndex(int index, int lowest, int highest);

// Rounds a double to single precision; a value beyond the single range is an Overflow fault,
// NaN an InvalidArgument fault. The one visible place where a stored value is rounded.
float StoreSingle(double value);

}  // namespace varo
