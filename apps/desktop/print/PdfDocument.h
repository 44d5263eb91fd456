#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/desktop/print/TPrintLayout.h"

namespace kk {

/// Some pages of a layout, from 1; those that are not there are passed over.
struct TPrintedPages {
  const TPrintLayout* Layout;
  int From;
  int To;
};

/// A PDF document on the paper of the first part, one part after the other. Raises Exception if
/// there is no page, or if the machine has no font. Main thread.
std::string ToPdf(const std::vector<TPrintedPages>& iParts);

/// Paints each page with the painter, and turns the leaf between two of them; iTurn answers false
/// if that failed. False then, and at once. Main thread.
bool PaintPages(QPainter& ioPainter, const QRectF& iPaper, const std::vector<TPrintedPages>& iParts,
                const std::function<bool()>& iTurn);

}  // namespace kk
