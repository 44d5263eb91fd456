#pragma once

#include <memory>

#include "host/controls/TPrintDialog.h"

class QPrintDialog;
class QPrinter;

namespace kk {

class TPrintLayout;

/// Prints on the machine's printers and into PDF files, by Qt's own print dialog, with a preview in
/// it. A list is one document of the printer for each call of Print. A PDF file is written in one
/// step, safely, and has each page once, however many copies are asked for. The paper is A4,
/// upright, unless the user chooses another, which it is for the following lists, too. Main thread.
class TQtPrinting : public IPrinting {
 public:
  TQtPrinting();
  ~TQtPrinting() override;

  std::unique_ptr<IPrintJob> CreateJob(TPrintContent iContent) override;
  bool ShowPrintDialog(TPrintDialog& ioDialog) override;

  /// What the user has chosen last, a printer or a file; made at the first use, because it asks the
  /// machine for its printers.
  QPrinter& Printer();

 private:
  class TJob;

  /// Proposes a file of its own for each list, beside the one before.
  void ProposeFile(const TPrintLayout& iLayout);
  void AddPreview(QPrintDialog& ioWindow, TJob& ioJob);
  void Offer(const TPrintDialog& iDialog, QPrintDialog& ioWindow);
  void Take(TPrintDialog& ioDialog, const QPrintDialog& iWindow);

  std::unique_ptr<QPrinter> FPrinter;
};

}  // namespace kk
