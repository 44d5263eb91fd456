#include "reminders/TRemindItemLoader.h"

#include "host/base/Guard.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {

namespace {

using TLoader = TRemindItemLoader;

// Kinds that tell about an article; their texts stand under the same names.
template <class Details>
std::unique_ptr<Details> DetailsWithTexts(TSimpleXMLNode iNode) {
  return std::make_unique<Details>(TLoader::GetValueAsString(iNode, cNodeRemindItemDetailsCaption),
                                   TLoader::GetValueAsString(iNode, cNodeRemindItemDetailsText),
                                   TLoader::GetValueAsString(iNode, cNodeRemindItemDetailsLink));
}

TRemindTypes TypesOf(TSimpleXMLNode iNode) {
  TStringList numbers;
  TLoader::GetValueAsStringList(iNode, cNodeRemindItemTypes, numbers, cNodeListDelimiter);
  TRemindTypes types;
  for (const TRemindType type : cRemindTypes) {
    if (numbers.IndexOf(IntToStr(static_cast<int>(type))) >= 0) types.Include(type);
  }
  return types;
}

}  // namespace

void TRemindItemLoader::LoadFromStream(TStream& iStream, TLstRemindItem& ioLst, bool iDecodeUTF8,
                                       TNotifyEvent iOnStep) {
  TSimpleXMLDocument document;
  document.LoadFromStream(iStream, iDecodeUTF8);
  TRemindItemLoader loader;
  loader.FOnStep = iOnStep;
  loader.LoadFromXML(document, ioLst);
}

void TRemindItemLoader::LoadFromXML(const TSimpleXMLDocument& iDocument,
                                    TLstRemindItem& ioLst) const {
  const TSimpleXMLNode root = iDocument.GetDocumentElement();
  if (root) LoadFromXML(root, ioLst);
}

void TRemindItemLoader::LoadFromXML(TSimpleXMLNode iNode, TLstRemindItem& ioLst) const {
  for (TSimpleXMLNode item = iNode.GetChildNodes().GetFirst(); item; item = item.GetNextSibling()) {
    if (FOnStep) FOnStep(nullptr);
    Guarded(u"TRemindItemLoader", [&] { LoadItemFromXML(item, ioLst); });
  }
}

void TRemindItemLoader::LoadItemFromXML(TSimpleXMLNode iNode, TLstRemindItem& ioLst) const {
  auto item = std::make_unique<TRemindItem>(cEmptyGuid);
  item->SetId(StringToGUID(GetValueAsString(iNode, cNodeRemindItemId)));
  item->SetRemindTime(GetValueAsDateTime(iNode, cNodeRemindItemTime));
  item->SetRemindTypes(TypesOf(iNode));
  const TSimpleXMLNode details = iNode.GetChildNodes().FindNode(cNodeRemindItemDetails);
  if (details) LoadDetails(details, *item);
  if (item->LstDetails().GetCount() > 0) ioLst.Add(std::move(item));
}

// In this order, whatever the order in the stream.
void TRemindItemLoader::LoadDetails(TSimpleXMLNode iDetails, TRemindItem& ioItem) const {
  using TLoad = void (TRemindItemLoader::*)(TSimpleXMLNode, TRemindItem&) const;
  static constexpr std::pair<TStringView, TLoad> cLoads[] = {
      {cNodeRemindItemDetailsSound, &TRemindItemLoader::LoadDetailsSound},
      {cNodeRemindItemDetailsEMail, &TRemindItemLoader::LoadDetailsEMail},
      {cNodeRemindItemDetailsSMS, &TRemindItemLoader::LoadDetailsSMS},
      {cNodeRemindItemDetailsWindow, &TRemindItemLoader::LoadDetailsWindow},
      {cNodeRemindItemDetailsOutlook, &TRemindItemLoader::LoadDetailsOutlook}};
  const TSimpleXMLNodeList children = iDetails.GetChildNodes();
  for (const auto& [name, load] : cLoads) {
    if (const TSimpleXMLNode node = children.FindNode(name)) (this->*load)(node, ioItem);
  }
}

void TRemindItemLoader::LoadDetailsSound(TSimpleXMLNode iNode, TRemindItem& ioItem) const {
  ioItem.LstDetails().Add(std::make_unique<TRemindDetailsSound>(
      GetValueAsString(iNode, cNodeRemindItemDetailsSoundfile)));
}

void TRemindItemLoader::LoadDetailsEMail(TSimpleXMLNode iNode, TRemindItem& ioItem) const {
  ioItem.LstDetails().Add(DetailsWithTexts<TRemindDetailsEMail>(iNode));
}

void TRemindItemLoader::LoadDetailsSMS(TSimpleXMLNode iNode, TRemindItem& ioItem) const {
  ioItem.LstDetails().Add(
      std::make_unique<TRemindDetailsSMS>(GetValueAsString(iNode, cNodeRemindItemDetailsText)));
}

void TRemindItemLoader::LoadDetailsWindow(TSimpleXMLNode iNode, TRemindItem& ioItem) const {
  ioItem.LstDetails().Add(DetailsWithTexts<TRemindDetailsWindow>(iNode));
}

void TRemindItemLoader::LoadDetailsOutlook(TSimpleXMLNode iNode, TRemindItem& ioItem) const {
  auto details = DetailsWithTexts<TRemindDetailsOutlook>(iNode);
  details->SetEntryId(GetValueAsString(iNode, cNodeRemindItemDetailsEntryID));
  ioItem.LstDetails().Add(std::move(details));
}

}  // namespace kk
