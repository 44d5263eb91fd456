#pragma once

#include "persistence/exchange/TfrmKKWatchlistExchange.h"

namespace kk {

/// Writes a chosen part of the watch list into a file "*.wch". Main thread.
class TfrmKKWatchlistExport final : public TfrmKKWatchlistExchange {
 public:
  /// Modal; true if the user has closed it with OK and the file was tried. With no item of any
  /// registered source there is a message instead. A file that can't be written is told in the log
  /// alone, as required, and the answer is true.
  static bool Display(TForm* iOwner);

 private:
  explicit TfrmKKWatchlistExport(TForm* iOwner);
  void ShowData();
  void btnOKClick(TObject* Sender) override;
  void ExportTo(TStringView iFileName) const;
};

}  // namespace kk
