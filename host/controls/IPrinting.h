#pragma once

#include <array>
#include <memory>
#include <vector>

#include "host/base/TString.h"

namespace kk {

struct TPrintDialog;

/// What is printed: rows of values below a title. The first four values of a row stand in columns,
/// each below its header; what a row has beyond them stands small below it, with its title.
struct TPrintContent {
  static constexpr size_t cColumns = 4;

  TString Title;
  TString Date;    ///< "Gedruckt am: 20.11.2026 18:30"
  TString Source;  ///< whose rows these are
  std::array<TString, cColumns> Headers;
  /// Of all values of a row, those in columns included; may be shorter than a row, or empty.
  std::vector<TString> Titles;
  /// A row may have fewer than four values, and more.
  std::vector<std::vector<TString>> Rows;
};

/// Content that is laid out on pages. Main thread.
class IPrintJob {
 public:
  virtual ~IPrintJob() = default;
  /// At least 1.
  virtual int CalculatePageCount() = 0;
  /// Prints these pages, from 1, on what the user has chosen last; pages that are not there are
  /// passed over. Raises Exception with a German text if it fails.
  virtual void Print(int iFromPage, int iToPage) = 0;
};

/// How a host prints; it installs one. Main thread.
class IPrinting {
 public:
  virtual ~IPrinting() = default;
  /// The job may live no longer than this.
  virtual std::unique_ptr<IPrintJob> CreateJob(TPrintContent iContent) = 0;
  /// Asks the user, modally, for the printer and the pages; true for OK, with what they have chosen
  /// in the dialog.
  virtual bool ShowPrintDialog(TPrintDialog& ioDialog) = 0;
};

/// Installs a printing, which is borrowed, and answers the one before; null is none.
IPrinting* SetPrinting(IPrinting* iPrinting);
/// The installed one. Raises Exception if there is none.
IPrinting& Printing();

}  // namespace kk
