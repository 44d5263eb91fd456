#include <cstdint>
#include <cstdlib>

#include "host/base/Exception.h"
#include "host/common/TFastWriterBaseSimpleXML.h"
#include "host/common/TParserBaseSimpleXML.h"
#include "host/common/TSimpleXMLDocument.h"

namespace {

// Reads everything that there is to read.
void Walk(kk::TSimpleXMLNode iParent) {
  using P = kk::TParserBaseSimpleXML;
  for (auto node = iParent.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    const kk::TString name = node.GetName();
    P::GetValueAsInteger(iParent, name);
    P::GetValueAsDateTime(iParent, name);
    P::GetValueAsGUID(iParent, name);
    P::GetValueAsBoolean(iParent, name);
    P::GetAttributeAsString(node, u"a");
    Walk(node);
  }
}

std::string Written(const kk::TString& iText) {
  kk::TFastWriterBaseSimpleXML writer;
  writer.WriteString(u"a", iText, iText + u"x");
  kk::TMemoryStream stream;
  writer.SaveToStream(stream);
  return stream.Bytes();
}

// What XML can't hold is left out the first time; after that nothing changes any more.
void CheckRoundTrip(const kk::TString& iText) {
  const std::string once = Written(iText);
  kk::TMemoryStream stream(once);
  kk::TSimpleXMLDocument document;
  document.LoadFromStream(stream, false);
  if (Written(document.GetDocumentElement().GetText()) != once) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  if (iSize == 0) return 0;
  kk::TMemoryStream stream(std::string(reinterpret_cast<const char*>(iData) + 1, iSize - 1));
  kk::TSimpleXMLDocument document;
  try {
    document.LoadFromStream(stream, (iData[0] & 1) != 0);
  } catch (const kk::EConvertError&) {
    return 0;
  }
  Walk(document.GetDocumentElement());
  CheckRoundTrip(document.GetDocumentElement().GetText());
  return 0;
}
