#pragma once

#include <string>
#include <vector>

#include "platform/surface.h"

namespace varo {

// A rectangle in logical units: of a drawing's own space, or of a page.
struct LogicalRect {
    float left = 0, top = 0, width = 0, height = 0;
};

// A window of a drawing, shown in a box of the page. The layout keeps both of the same shape,
// so the drawing keeps its aspect ratio.
struct PagePlacement {
    Surface drawing;
    LogicalRect source;
    LogicalRect target;
};

// One sheet: drawings placed on a page of `width` by `height` logical units (twips), which the
// printer lays as large as fits inside its margins, keeping the shape.
struct PrintPage {
    float width = 0;
    float height = 0;
    std::vector<PagePlacement> placements;
};

struct PrintDocument {
    std::string name;  // the print job's name, and the proposed PDF file name without ".pdf"
    std::vector<PrintPage> pages;
};

// How a print went: out, cancelled by the user (no failure), or failed with the reason why.
struct PrintOutcome {
    enum class Status { Printed, Cancelled, Failed } status = Status::Cancelled;
    std::string detail;
};

}  // namespace varo
