#pragma once

namespace kk {

class TForm;
struct TOpenDialog;

/// How modal windows are shown: by dialogs on the desktop, by questions in the terminal, from a
/// script in tests. Main thread.
class IFormHost {
 public:
  virtual ~IFormHost() = default;
  /// Shows the form, which is visible and modal, and keeps the main loop alive until
  /// TForm::EndModalIfDone answers true, which it asks at least once for each turn of the loop.
  virtual void ShowModal(TForm& ioForm) = 0;
  /// Asks the user for a file, modally; true for OK, with the full path in FileName.
  virtual bool ShowOpenDialog(TOpenDialog& ioDialog) = 0;
};

/// The installed host; asking for it without one raises Exception.
IFormHost& FormHost();
/// Borrowed; answers the one before.
IFormHost* SetFormHost(IFormHost* iHost);

}  // namespace kk
