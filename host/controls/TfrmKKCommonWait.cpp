#include "host/controls/TfrmKKCommonWait.h"

#include <exception>
#include <thread>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"

namespace kk {

namespace {

constexpr int cMessageBegin = 1;

// Between two turns of the main loop, beside the one piece of work that can't be divided.
constexpr int64_t cTurnMs = 5;

}  // namespace

TfrmKKCommonWait::TfrmKKCommonWait(TStringView iText)
    : TfrmKKCommonBase(nullptr, u"TfrmKKCommonWait", u"Bitte warten") {
  using TSelf = TfrmKKCommonWait;
  lblText.SetCaption(iText);
  pnlButtons.SetArrangement(TArrangement::arRow);
  btnCancel.SetOnClick(TNotifyEvent::Of<&TSelf::btnCancelClick>(this));
  SetCancelButton(&btnCancel);
  SetOnCloseQuery(TCloseQueryEvent::Of<&TSelf::CloseQuery>(this));
}

void TfrmKKCommonWait::Run(TStringView iText, const TWork& iWork) {
  if (!MainLoop().IsMainThread()) return iWork({});
  TfrmKKCommonWait form(iText);
  std::exception_ptr failure;
  std::thread worker([&] {
    try {
      iWork(form.FStop.get_token());
    } catch (...) {  // handed to the waiting thread
      failure = std::current_exception();
    }
    MainLoop().Post([&form] { form.Done(); });
  });
  try {
    form.ShowModal();
  } catch (...) {  // the worker uses the form: it has to end first
    form.FStop.request_stop();
    while (!form.FDone) {
      MainLoop().ProcessMessages();
      MainLoop().WaitForMessage(1);
    }
    worker.join();
    throw;
  }
  worker.join();
  if (failure) std::rethrow_exception(failure);
}

bool TfrmKKCommonWait::RunInSteps(TStringView iText, const TWorkInSteps& iWork) {
  TfrmKKCommonWait form(iText);
  std::exception_ptr failure;
  form.FWork = [&] {
    try {
      iWork(form);
    } catch (...) {  // handed to the caller behind the window
      failure = std::current_exception();
    }
  };
  form.PostUserMessage(cMessageBegin);
  form.ShowModal();
  if (!form.FDone || form.FStop.stop_requested()) return false;
  if (failure) std::rethrow_exception(failure);
  return true;
}

void TfrmKKCommonWait::UserMessage(int iMessage) {
  if (iMessage != cMessageBegin) return;
  if (!FStop.stop_requested()) FWork();
  Done();
}

void TfrmKKCommonWait::Step(TObject*) {
  if (SteadyMs() >= FNextTurn) {
    MainLoop().ProcessMessages();
    FNextTurn = SteadyMs() + cTurnMs;
  }
  if (FStop.stop_requested()) throw Exception(u"Der Vorgang wurde abgebrochen");
}

void TfrmKKCommonWait::btnCancelClick(TObject*) {
  btnCancel.SetEnabled(false);
  FStop.request_stop();
}

// Nothing ends the window but the end of the work; who closes it gives the wait up.
void TfrmKKCommonWait::CloseQuery(TObject*, bool& ioCanClose) {
  ioCanClose = FDone;
  if (!FDone) FStop.request_stop();
}

void TfrmKKCommonWait::Done() {
  FDone = true;
  SetModalResult(cModalOK);
}

}  // namespace kk
