#include "sources/page/TPageStream.h"

#include <charconv>

#include "host/base/Exception.h"
#include "sources/page/PageResourceStrings.h"

namespace kk {

namespace {

constexpr std::string_view cMagic = "KKPAGE\r\n";

enum TField : uint64_t {
  cFieldId = 1,
  cFieldAddress = 2,
  cFieldName = 3,
  cFieldPrice = 4,
  cFieldCurrency = 5,
  cFieldAvailability = 6,
  cFieldSeller = 7,
  cFieldImage = 8,
  cFieldEndTime = 9,
  cFieldETag = 10,
  cFieldLastModified = 11,
  cFieldReaderVersion = 12,
  cFieldChanged = 13
};

void PutNumber(std::string& ioBytes, uint64_t iNumber) {
  for (; iNumber >= 0x80; iNumber >>= 7) ioBytes += static_cast<char>(iNumber | 0x80);
  ioBytes += static_cast<char>(iNumber);
}

// An empty value is written as no field.
void PutField(std::string& ioBytes, TField iField, std::string_view iValue) {
  if (iValue.empty()) return;
  PutNumber(ioBytes, iField);
  PutNumber(ioBytes, iValue.size());
  ioBytes += iValue;
}

void PutTime(std::string& ioBytes, TField iField, TDateTime iTime) {
  if (!iTime.IsZero()) PutField(ioBytes, iField, ToUtf8(DateTimeToIso(iTime)));
}

[[noreturn]] void RaiseDamaged() { throw Exception(_resPageStreamDamaged); }

// Takes numbers and pieces from the front; raises where there are too few bytes.
class TBytes {
 public:
  explicit TBytes(std::string_view iBytes) : FRest(iBytes) {}

  bool IsEmpty() const { return FRest.empty(); }
  std::string_view Rest() const { return FRest; }

  uint64_t Number() {
    uint64_t number = 0;
    for (int shift = 0; shift < 63; shift += 7) {
      const auto byte = static_cast<unsigned char>(Take(1)[0]);
      number |= static_cast<uint64_t>(byte & 0x7F) << shift;
      if (byte < 0x80) return number;
    }
    RaiseDamaged();
  }
  std::string_view Take(uint64_t iCount) {
    if (iCount > FRest.size()) RaiseDamaged();
    const std::string_view piece = FRest.substr(0, iCount);
    FRest.remove_prefix(iCount);
    return piece;
  }

 private:
  std::string_view FRest;
};

bool ReadInt(std::string_view iText, int& oNumber) {
  const char* const end = iText.data() + iText.size();
  const auto [at, error] = std::from_chars(iText.data(), end, oNumber);
  return error == std::errc() && at == end && oNumber >= 0;
}

// False for a value that makes no sense here.
bool ReadField(uint64_t iField, std::string_view iValue, TPageData& ioData) {
  TOffer& offer = ioData.Product.Offer;
  switch (iField) {
    case cFieldId:
      return TryStringToGuid(FromUtf8(iValue), ioData.Id);
    case cFieldAddress:
      ioData.Address = TPageAddress::FromNormalized(iValue).value_or(TPageAddress());
      return !ioData.Address.IsEmpty();
    case cFieldName:
      ioData.Product.Name = FromUtf8(iValue);
      return true;
    case cFieldPrice:
      offer.Price = TPrice::FromNumber(iValue);
      return offer.Price.has_value();
    case cFieldCurrency:
      offer.Currency = FromUtf8(iValue);
      return true;
    case cFieldAvailability:
      offer.Availability = AvailabilityFromText(iValue);
      return offer.Availability != TAvailability::avUnknown;
    case cFieldSeller:
      offer.Seller = FromUtf8(iValue);
      return true;
    case cFieldImage:
      ioData.Product.Image = FromUtf8(iValue);
      return true;
    case cFieldEndTime:
      return TryIsoToDateTime(FromUtf8(iValue), offer.EndTime);
    case cFieldETag:
      ioData.ETag = iValue;
      return true;
    case cFieldLastModified:
      ioData.LastModified = iValue;
      return true;
    case cFieldReaderVersion:
      return ReadInt(iValue, ioData.ReaderVersion);
    case cFieldChanged:
      return TryIsoToDateTime(FromUtf8(iValue), ioData.Changed);
    default:
      PutNumber(ioData.UnknownFields, iField);
      PutNumber(ioData.UnknownFields, iValue.size());
      ioData.UnknownFields += iValue;
      return true;
  }
}

TPageData ReadPageData(std::string_view iRecord) {
  TPageData data;
  bool complete = true;
  for (TBytes bytes(iRecord); !bytes.IsEmpty();) {
    const uint64_t field = bytes.Number();
    const std::string_view value = bytes.Take(bytes.Number());
    complete = ReadField(field, value, data) && complete;
  }
  if (data.Id == cEmptyGuid || data.Address.IsEmpty()) RaiseDamaged();
  // What got lost comes back with the next refresh, which then must not find "unchanged".
  if (!complete) data.ReaderVersion = 0;
  return data;
}

}  // namespace

TPageStreamWriter::TPageStreamWriter() : FBytes(cMagic) { PutNumber(FBytes, cPageStreamVersion); }

void TPageStreamWriter::Add(const TPageData& iData) {
  const TOffer& offer = iData.Product.Offer;
  std::string record;
  PutField(record, cFieldId, ToUtf8(GUIDToString(iData.Id)));
  PutField(record, cFieldAddress, iData.Address.Text());
  PutField(record, cFieldName, ToUtf8(iData.Product.Name));
  if (offer.Price) PutField(record, cFieldPrice, offer.Price->ToNumber());
  PutField(record, cFieldCurrency, ToUtf8(offer.Currency));
  PutField(record, cFieldAvailability, AvailabilityName(offer.Availability));
  PutField(record, cFieldSeller, ToUtf8(offer.Seller));
  PutField(record, cFieldImage, ToUtf8(iData.Product.Image));
  PutTime(record, cFieldEndTime, offer.EndTime);
  PutField(record, cFieldETag, iData.ETag);
  PutField(record, cFieldLastModified, iData.LastModified);
  if (iData.ReaderVersion > 0) {
    PutField(record, cFieldReaderVersion, std::to_string(iData.ReaderVersion));
  }
  PutTime(record, cFieldChanged, iData.Changed);
  record += iData.UnknownFields;
  PutNumber(FBytes, record.size());
  FBytes += record;
}

std::string TPageStreamWriter::TakeBytes() {
  PutNumber(FBytes, 0);
  return std::move(FBytes);
}

std::vector<TPageData> ReadPageStream(TStream& iStream) {
  const std::string all = iStream.ReadRest();
  TBytes bytes(all);
  if (bytes.Take(cMagic.size()) != cMagic || bytes.Number() == 0) RaiseDamaged();
  std::vector<TPageData> pages;
  while (const uint64_t length = bytes.Number()) pages.push_back(ReadPageData(bytes.Take(length)));
  return pages;
}

}  // namespace kk
