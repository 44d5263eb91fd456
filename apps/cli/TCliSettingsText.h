#pragma once

#include <vector>

#include "apps/cli/ICliConsole.h"
#include "host/contract/ISettingsPublisher.h"

namespace kk {

/// "settings export" and "settings import": what plug-ins tell of their settings, as a text file
/// for another installation. Each plug-in has a section with its own name in it. Main thread.
class TCliSettingsText {
 public:
  using TPublishers = std::vector<TIntf<ISettingsPublisher>>;
  /// No file beyond this size is taken for settings.
  static constexpr int64_t cMaxSize = 1 << 20;

  /// Borrowed.
  TCliSettingsText(ICliConsole& ioConsole, const TPublishers& iPublishers)
      : FConsole(ioConsole), FPublishers(iPublishers) {}

  /// Writes UTF-8. A file that is there is replaced only if the user agrees. EInOutError if it
  /// can't be written, Exception if the user says no.
  void Export(TStringView iFileName);
  /// Gives each plug-in its section; of others the user is told. EInOutError if the file can't be
  /// read; Exception if it is too large, if no section is a plug-in's, and for a line that the
  /// plug-in can't take: what stands before it holds, and what stands behind it was not read.
  void Import(TStringView iFileName);

 private:
  /// The lines of each plug-in's section, in the order of the plug-ins; empty for none.
  std::vector<TStringList> SectionsOf(TStringView iText);
  void Take(ISettingsPublisher& ioPublisher, const TStringList& iLines);

  ICliConsole& FConsole;
  const TPublishers& FPublishers;
};

}  // namespace kk
