#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// The commands that bring the list out and in: "export", "import", "mobile ...". What goes wrong
/// raises Exception or has been told. Main thread.
class TCliExchange {
 public:
  explicit TCliExchange(TCliContext& ioContext) : FContext(ioContext) {}
  /// True if the command is one of these.
  static bool Knows(const TCliCommandInfo& iCommand);
  /// False if it did not go through.
  bool Run(const TCliArguments& iCall);

 private:
  bool Export(const TCliArguments& iCall);
  bool ExportMobile(const TCliArguments& iCall);
  /// A file of either kind.
  bool Import(const TCliArguments& iCall);
  TGuid SourceId(TStringView iName) const;
  TString CategoryName(const TCliArguments& iCall) const;
  void TellWhatCame(const TWatchlistInfo& iBefore, bool iDone);

  TCliContext& FContext;
};

}  // namespace kk
