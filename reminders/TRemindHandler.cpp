#include "reminders/TRemindHandler.h"

#include "host/base/Guard.h"
#include "host/base/TMainLoop.h"
#include "reminders/TRemindItemLoader.h"
#include "reminders/TRemindItemSaver.h"

namespace kk {

TRemindHandler::~TRemindHandler() { EndThread(); }

void TRemindHandler::StartThread(const TIntf<IApplication>& iApplication) {
  IRemindThreadFactory* factory = RemindThreadFactory();
  if (FThread != nullptr || factory == nullptr) return;
  FThread = &factory->StartThread(
      iApplication, FLstRemind,
      TNotifyProcessRemindItem::Of<&TRemindHandler::DoThreadProcessItem>(this),
      TNotifyEvent::Of<&TRemindHandler::DoThreadTerminate>(this));
}

void TRemindHandler::EndThread() {
  if (FThread == nullptr || FThreadTerminationSignalized) return;
  TMainLoop& loop = MainLoop();
  FThread->Terminate();
  while (!FThreadTerminationSignalized) {
    // What a message raises doesn't end the wait: the thread still works on the list.
    Guarded(u"TRemindHandler.EndThread", [&] {
      loop.ProcessMessages();
      loop.WaitForMessage(1);
    });
  }
}

void TRemindHandler::SaveToStream(TStream& ioStream) {
  const TLstRemindItemSync::TWriting writing(FLstRemind);
  TRemindItemSaver::SaveToStream(ioStream, FLstRemind);
  FLstRemind.SetChanged(false);
}

void TRemindHandler::LoadFromStream(TStream& iStream, bool iDecodeUTF8) {
  const TLstRemindItemSync::TWriting writing(FLstRemind);
  FLstRemind.Clear();
  TRemindItemLoader::LoadFromStream(iStream, FLstRemind, iDecodeUTF8);
  FLstRemind.SetChanged(false);
}

void TRemindHandler::DoThreadTerminate(TObject* /*Sender*/) { FThreadTerminationSignalized = true; }

void TRemindHandler::DoThreadProcessItem(TObject* /*Sender*/, TRemindItem& iItem) {
  if (FOnProcessElapsedItem) FOnProcessElapsedItem(this, iItem);
}

}  // namespace kk
