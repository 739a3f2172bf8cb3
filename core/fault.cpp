#include "core/fault.h"

#include <cfloat>
#include <cmath>

namespace varo {

const char* FaultText(FaultKind kind) {
    switch (kind) {
        case FaultKind::DivisionByZero:
            return "Division by zero";
        case FaultKind::InvalidArgument:
            return "Invalid argument (square root or logarithm of a bad value)";
        case FaultKind::Overflow:
            return "Overflow";
        case FaultKind::IndexOutOfRange:
            return "Index out of range";
    }
    return "Arithmetic fault";
}

double CheckedFinite(double x) {
    if (std::isnan(x)) throw ArithmeticFault(FaultKind::InvalidArgument);
    if (std::isinf(x)) throw ArithmeticFault(FaultKind::Overflow);
    return x;
}

double CheckedDivide(double numerator, double denominator) {
    if (denominator == 0.0) throw ArithmeticFault(FaultKind::DivisionByZero);
    return CheckedFinite(numerator / denominator);
}

double CheckedSqrt(double x) {
    if (!(x >= 0.0)) throw ArithmeticFault(FaultKind::InvalidArgument);
    return CheckedFinite(std::sqrt(x));
}

double CheckedLog(double x) {
    if (!(x > 0.0)) throw ArithmeticFault(FaultKind::InvalidArgument);
    return CheckedFinite(std::log(x));
}

double CheckedLog10(double x) {
    if (!(x > 0.0)) throw ArithmeticFault(FaultKind::InvalidArgument);
    return CheckedFinite(std::log10(x));
}

double CheckedExp(double x) {
    return CheckedFinite(std::exp(CheckedFinite(x)));
}

int CheckedIndex(int index, int lowest, int highest) {
    if (index < lowest || index > highest) throw ArithmeticFault(FaultKind::IndexOutOfRange);
    return index;
}

float StoreSingle(double value) {
    CheckedFinite(value);
    const float stored = static_cast<float>(value);
    if (std::isinf(stored)) throw ArithmeticFault(FaultKind::Overflow);
    return stored;
}

}  // namespace varo
