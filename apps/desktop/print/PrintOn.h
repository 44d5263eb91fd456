#pragma once

#include "apps/desktop/print/PdfDocument.h"

class QPrinter;

namespace kk {

/// Prints the parts as one document, on the whole paper. Raises Exception with a German text if the
/// printer does not take it. Main thread.
void PrintOn(QPrinter& ioPrinter, const std::vector<TPrintedPages>& iParts);

}  // namespace kk
