#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliFormHost.h"
#include "apps/cli/TCliLog.h"
#include "host/base/TDateTime.h"

namespace kk {

class ICliConsole;
class TCliDialog;

/// Fills the editor of reminders as a call of "remind" wants it, by the user's door. With a time it
/// presses OK as well, and leaves the editor where its rules refuse something; what they say is
/// told as an error, once, though the log has it, too. Without a time the user is asked for the
/// rest.
class TCliRemindEditor {
 public:
  /// A time, kind or sound file that can't be meant raises ECliUsage. The console is borrowed.
  TCliRemindEditor(ICliConsole& ioConsole, const TCliArguments& iCall);

  /// Whether the call says when.
  bool HasTime() const { return FSpan || FMoment || !FBeforeEnd.empty(); }
  /// For TCliFormHost::TAnswering.
  bool Answer(TForm& ioForm);

 private:
  void ReadTime(const TCliArguments& iCall);
  void Fill(TForm& ioForm);
  void FillSound(TForm& ioForm) const;
  void FillSpan(TForm& ioForm, int64_t iSeconds) const;
  void FillMoment(TForm& ioForm) const;

  ICliConsole& FConsole;
  TString FKind;                     ///< as the editor names it; empty for what it proposes
  TString FSoundFile;                ///< full path; empty for what it proposes
  std::optional<int64_t> FSpan;      ///< seconds
  std::optional<TDateTime> FMoment;  ///< whole seconds
  TString FBeforeEnd;                ///< as the editor names it
  bool FFilled = false;
  TCliLog::TKeeping FErrors;  ///< that the editor's messages tell as well
};

}  // namespace kk
