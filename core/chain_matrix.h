#pragma once

// Complex numbers and chain (ABCD) matrices of a ladder of lossy series inductors and shunt
// capacitors: what the ladder analysis, the tank-loss analysis and the S-parameter export share.

#include <cmath>

namespace varo {

// A plain complex number: the ordinary formulas, without the library's special-value handling
// (callers check their values themselves).
struct Complex {
    double re = 0;
    double im = 0;
};

inline Complex operator+(Complex a, Complex b) {
    return {a.re + b.re, a.im + b.im};
}
inline Complex operator-(Complex a, Complex b) {
    return {a.re - b.re, a.im - b.im};
}
inline Complex operator*(Complex a, Complex b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
inline Complex operator*(double k, Complex a) {
    return {k * a.re, k * a.im};
}
inline Complex Conjugate(Complex z) {
    return {z.re, -z.im};
}
inline double SquaredMagnitude(Complex z) {
    return z.re * z.re + z.im * z.im;
}
// Unchecked: a zero divisor leaves infinities or NaNs for the caller to find.
inline Complex operator/(Complex a, Complex b) {
    const double scale = SquaredMagnitude(b);
    const Complex product = a * Conjugate(b);
    return {product.re / scale, product.im / scale};
}

inline bool IsFinite(Complex z) {
    return std::isfinite(z.re) && std::isfinite(z.im);
}

// The reflection of an impedance against a real reference resistance.
inline Complex Reflection(Complex z, double referenceOhms) {
    const Complex r{referenceOhms, 0};
    return (z - r) / (z + r);
}

// Chain (ABCD) matrix of a two-port, generator side first.
struct ChainMatrix {
    Complex a{1, 0};
    Complex b{};
    Complex c{};
    Complex d{1, 0};
};

// Running product times [1 Z; 0 1].
inline void AppendSeries(ChainMatrix& t, Complex z) {
    t.b = t.a * z + t.b;
    t.d = t.c * z + t.d;
}

// Running product times [1 0; Y 1].
inline void AppendShunt(ChainMatrix& t, Complex y) {
    t.a = t.a + t.b * y;
    t.c = t.c + t.d * y;
}

// The impedance at the generator side with `zLoad` at the other.
inline Complex InputImpedance(const ChainMatrix& t, Complex zLoad) {
    return (t.a * zLoad + t.b) / (t.c * zLoad + t.d);
}

// The impedance of an inductor or the admittance of a capacitor with reactance (or susceptance)
// `reactive`: the loss is a series resistance (or parallel conductance) of reactive / Q.
inline Complex LossyImmittance(double reactive, double inverseQ) {
    return {reactive * inverseQ, reactive};
}

// Running product times the matrix of a series inductor or a shunt capacitor of that reactance.
inline void AppendElement(ChainMatrix& t, bool series, double reactive, double inverseQ) {
    const Complex immittance = LossyImmittance(reactive, inverseQ);
    if (series) {
        AppendSeries(t, immittance);
    } else {
        AppendShunt(t, immittance);
    }
}

}  // namespace varo
