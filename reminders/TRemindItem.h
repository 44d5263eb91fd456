#pragma once

#include "host/base/TDateTime.h"
#include "host/base/TGuid.h"
#include "reminders/TLstRemindDetails.h"

namespace kk {

/// One reminder: for which search result, when and how. It refers to the search result by id alone.
/// Owned by the list that it is in; one thread at a time.
class TRemindItem : public TObject {
 public:
  explicit TRemindItem(const TGuid& iId) : FId(iId) {}

  /// The id of the watched search result.
  const TGuid& Id() const { return FId; }
  void SetId(const TGuid& iId) { FId = iId; }
  /// The kinds, for views and for the stream. Delivery goes by the details; the two usually agree.
  TRemindTypes RemindTypes() const { return FRemindTypes; }
  void SetRemindTypes(TRemindTypes iTypes) { FRemindTypes = iTypes; }
  /// When it is due, local time.
  TDateTime RemindTime() const { return FRemindTime; }
  void SetRemindTime(TDateTime iTime) { FRemindTime = iTime; }
  TLstRemindDetails& LstDetails() { return FLstDetails; }
  const TLstRemindDetails& LstDetails() const { return FLstDetails; }

  /// A plain reminder with the same content, whatever the class of this one.
  std::unique_ptr<TRemindItem> Clone() const;
  /// Takes over id, kinds, time and a clone of each of the details, in order.
  void Copy(const TRemindItem& iSource);
  /// Writes id, time and kinds as detail lines to the log.
  void DumpParams() const;

 private:
  TGuid FId;
  TRemindTypes FRemindTypes;
  TDateTime FRemindTime;
  TLstRemindDetails FLstDetails;
};

}  // namespace kk
