#pragma once

#include <string>

#include "host/base/TGuid.h"
#include "sources/page/TPageAddress.h"
#include "sources/page/TProduct.h"

namespace kk {

/// All that is kept of one watched page.
struct TPageData {
  TGuid Id;
  TPageAddress Address;
  /// Until the first refresh its name is the address and the rest is unknown.
  TProduct Product;
  /// Of the last answer, for asking whether the page has changed.
  std::string ETag;
  std::string LastModified;
  /// Which version of the reader made the product; 0 until the first refresh.
  int ReaderVersion = 0;
  /// When the product last read differently than before, local time; zero until the first refresh.
  TDateTime Changed;
  /// Fields of a newer version, as they stand in its stream.
  std::string UnknownFields;
};

/// What stands for a page before it was read: its address. iTyped is how the user wrote it.
inline TPageData NewPageData(const TPageAddress& iAddress, TStringView iTyped) {
  TPageData data;
  data.Id = NewGuid();
  data.Address = iAddress;
  data.Product.Name = iTyped;
  return data;
}

}  // namespace kk
