#include "host/common/THttpAddress.h"

#include <arpa/inet.h>
#include <curl/curl.h>

#include <memory>

namespace kk {

namespace {

constexpr size_t cMaxAddressBytes = 2048;
constexpr uint32_t cLoopbackNet = 127;

using TUrl = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

// One part of an address; empty if it has none.
std::string PartOf(const TUrl& iUrl, CURLUPart iPart) {
  char* text = nullptr;
  if (curl_url_get(iUrl.get(), iPart, &text, 0) != CURLUE_OK) return {};
  std::string part(text);
  curl_free(text);
  return part;
}

}  // namespace

std::optional<THttpAddress> THttpAddress::Parse(std::string_view iText) {
  if (iText.size() > cMaxAddressBytes || iText.find('\0') != std::string_view::npos) return {};
  const TUrl url(curl_url(), &curl_url_cleanup);
  if (!url) return {};
  const std::string text(iText);
  if (curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_URLENCODE) != CURLUE_OK) return {};
  for (const CURLUPart part : {CURLUPART_USER, CURLUPART_PASSWORD, CURLUPART_FRAGMENT}) {
    if (!PartOf(url, part).empty()) return {};
  }
  THttpAddress address{PartOf(url, CURLUPART_URL), PartOf(url, CURLUPART_SCHEME),
                       PartOf(url, CURLUPART_HOST), PartOf(url, CURLUPART_PATH),
                       PartOf(url, CURLUPART_QUERY)};
  if (address.Host.empty() || (address.Scheme != "http" && address.Scheme != "https")) return {};
  return address;
}

bool THttpAddress::IsLoopback() const {
  if (curl_strequal(Host.c_str(), "localhost") != 0 || Host == "[::1]") return true;
  in_addr address{};
  return inet_pton(AF_INET, Host.c_str(), &address) == 1 &&
         ntohl(address.s_addr) >> 24 == cLoopbackNet;
}

}  // namespace kk
