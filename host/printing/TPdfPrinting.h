#pragma once

#include <chrono>
#include <stop_token>
#include <string>

#include "host/controls/IPrinting.h"

namespace kk {

/// How the program that makes PDF files is run; the defaults are the product's.
struct TPdfOptions {
  /// Empty is kaufkobolde-print beside the running program.
  std::string Program = {};
  /// It is killed if it takes longer.
  std::chrono::milliseconds Deadline{std::chrono::minutes(2)};
};

/// A printing that asks nobody: every print dialog is OK'd as it comes, and what is printed is kept
/// until all of it becomes one PDF file. It knows no pages: each job counts as one. The layout is
/// made by a program of its own, kaufkobolde-print, so that a host without a screen needs no
/// toolkit.
class TPdfPrinting : public IPrinting {
 public:
  std::unique_ptr<IPrintJob> CreateJob(TPrintContent iContent) override;
  bool ShowPrintDialog(TPrintDialog& /*ioDialog*/) override { return true; }

  /// What was printed, in order.
  const std::vector<TPrintContent>& Contents() const { return FContents; }
  /// Writes all that was printed into the file, in place of what it held. Raises Exception with a
  /// German text if that fails; the old file is as it was then. Any thread, while nothing is
  /// printed.
  void WriteTo(TStringView iFileName, const std::stop_token& iStop,
               const TPdfOptions& iOptions = {}) const;

 private:
  class TJob;

  std::vector<TPrintContent> FContents;
};

}  // namespace kk
