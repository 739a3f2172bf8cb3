#include "fuzz/fuzz_targets.h"

#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "core/numtext.h"
#include "model/touchstone_load.h"
#include "screens/plot/overlay_files.h"
#include "session/last_session.h"

namespace varo::fuzz {
namespace {

void Require(bool rule) {
    if (!rule) std::abort();
}

void RequireBoundedTexts(float x) {
    for (auto format : {FormatEng, FormatHz, FormatHenry, FormatFarad, FormatNumber}) {
        const std::string text = format(x);
        Require(text.size() <= 15 && text.find("inf") == std::string::npos &&
                text.find("nan") == std::string::npos);
    }
}

std::string ScratchFile(std::string_view bytes) {
    static const std::string path = "/tmp/varo-fuzz-" + std::to_string(::getpid());
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

bool WithinEntryLimits(float v) {
    return std::isfinite(v) && std::fabs(v) <= 1e10f;
}

}  // namespace

void NumberText(std::string_view bytes) {
    std::string text(bytes);
    const float value = ParseEngNumber(text);
    Require(WithinEntryLimits(value));
    RequireBoundedTexts(value);
    if (bytes.size() < sizeof(float)) return;
    float raw = 0;
    std::memcpy(&raw, bytes.data(), sizeof raw);  // any bit pattern, infinities and NaN too
    RequireBoundedTexts(raw);
}

void LastSession(std::string_view bytes) {
    DesignState state;
    ReadLastSession(state, ScratchFile(bytes));
    for (float v : {state.frequency, state.plateR, state.intermediateR, state.loadR, state.piQ,
                    state.peakSwing, state.spare, state.rfPower})
        Require(WithinEntryLimits(v));
    Require(state.genMultiplier == 1.0f);
}

void Overlay(std::string_view bytes) {
    DesignState state;
    OverlayData overlay;
    const bool ok = ReadOverlayFile(ScratchFile(bytes), state, overlay).ok();
    Require(ok ? overlay.overlayLastIndex >= 0 && overlay.overlayLastIndex < kSweepPoints
               : overlay.overlayLastIndex == -1);
    for (int i = 0; i <= overlay.overlayLastIndex; ++i)
        Require(state.sweepFrequency[i] > 0 && std::isfinite(overlay.overlayValue[i]));
}

void TouchstoneLoad(std::string_view bytes) {
    OnePortLoad load;
    try {
        load = ParseOnePortTouchstone(bytes);
    } catch (const LoadFileError&) {
        return;  // text that is no one-port file, refused as it should be
    } catch (...) {
        std::abort();
    }
    Require(load.referenceR > 0 && std::isfinite(load.referenceR) && !load.points.empty() &&
            load.points.size() <= kMaxLoadPoints);
    double before = 0;
    for (const LoadPoint& p : load.points) {
        Require(std::isfinite(p.frequency) && p.frequency > before && std::isfinite(p.z.re) &&
                std::isfinite(p.z.im) && p.z.re >= 0);
        before = p.frequency;
    }
}

}  // namespace varo::fuzz
