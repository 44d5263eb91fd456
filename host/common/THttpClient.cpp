#include "host/common/THttpClient.h"

#include <curl/curl.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "host/base/Exception.h"

namespace kk {

namespace {

constexpr char cUserAgent[] = "Mozilla/5.0 (compatible; Kaufkobolde/7.0)";
constexpr char cProtocols[] = "http,https";
// Headers of all redirects together; libcurl itself bounds a single line only.
constexpr size_t cMaxHeaderBytes = size_t{256} << 10;
constexpr size_t cMegabyte = size_t{1} << 20;
constexpr long cFirstFinalStatus = 200;

TString SizeFailure(size_t iMaxBytes) {
  const TString size = iMaxBytes % cMegabyte == 0 ? Format(u"%d MB", {iMaxBytes / cMegabyte})
                                                  : Format(u"%d Bytes", {iMaxBytes});
  return u"Die Antwort ist größer als " + size;
}

// What went wrong, as the user reads it.
TString FailureOf(CURLcode iCode, long iOsError) {
  switch (iCode) {
    case CURLE_URL_MALFORMAT:
      return u"Die Adresse ist ungültig";
    case CURLE_UNSUPPORTED_PROTOCOL:
      return u"Nur Adressen mit http und https sind erlaubt";
    case CURLE_COULDNT_RESOLVE_HOST:
      return u"Der Rechner wurde nicht gefunden";
    case CURLE_COULDNT_RESOLVE_PROXY:
      return u"Der Proxy wurde nicht gefunden";
    case CURLE_COULDNT_CONNECT:
      return iOsError == ECONNREFUSED ? u"Die Verbindung wurde abgelehnt"
                                      : u"Die Verbindung ist nicht möglich";
    case CURLE_OPERATION_TIMEDOUT:
      return u"Zeitüberschreitung";
    case CURLE_TOO_MANY_REDIRECTS:
      return u"Zu viele Weiterleitungen";
    case CURLE_GOT_NOTHING:
      return u"Der Server hat nicht geantwortet";
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_PARTIAL_FILE:
      return u"Die Verbindung wurde unterbrochen";
    case CURLE_WEIRD_SERVER_REPLY:
      return u"Die Antwort ist nicht verständlich";
    case CURLE_BAD_CONTENT_ENCODING:
      return u"Die Antwort ist nicht lesbar gepackt";
    case CURLE_SSL_CONNECT_ERROR:
      return u"Die verschlüsselte Verbindung ist fehlgeschlagen";
    case CURLE_PEER_FAILED_VERIFICATION:
      return u"Das Zertifikat des Servers ist ungültig";
    default:
      return Format(u"Fehler bei der Übertragung (%s)", {FromUtf8(curl_easy_strerror(iCode))});
  }
}

// The value of a header line if it has this name; names are compared without case.
bool HeaderValue(std::string_view iLine, std::string_view iName, std::string& oValue) {
  if (iLine.size() <= iName.size() || iLine[iName.size()] != ':') return false;
  if (!curl_strnequal(iLine.data(), iName.data(), iName.size())) return false;
  iLine.remove_prefix(iName.size() + 1);
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!iLine.empty() && isBlank(iLine.front())) iLine.remove_prefix(1);
  while (!iLine.empty() && isBlank(iLine.back())) iLine.remove_suffix(1);
  oValue = iLine;
  return true;
}

// RFC 9110, 5.6.2: what a name consists of.
bool IsToken(const std::string& iText) {
  constexpr std::string_view cChars =
      "!#$%&'*+-.^_`|~0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  return !iText.empty() && iText.find_first_not_of(cChars) == std::string::npos;
}

bool IsControl(char iChar) { return static_cast<unsigned char>(iChar) < 0x20 || iChar == 0x7F; }

bool IsValid(const THttpHeader& iHeader) {
  return IsToken(iHeader.Name) &&
         std::none_of(iHeader.Value.begin(), iHeader.Value.end(), IsControl);
}

// What the user's environment exempts, and this machine itself in any case.
std::string ProxyExceptions() {
  const char* exceptions = std::getenv("no_proxy");
  if (exceptions == nullptr) exceptions = std::getenv("NO_PROXY");
  if (exceptions == nullptr) return "localhost,127.0.0.0/8,::1";
  const std::string all(exceptions);
  return all == "*" ? all : "localhost,127.0.0.0/8,::1," + all;
}

// The server may have had the request, and nobody knows.
bool IsLoss(CURLcode iCode) {
  return iCode == CURLE_GOT_NOTHING || iCode == CURLE_RECV_ERROR || iCode == CURLE_SEND_ERROR;
}

// One transfer: its handle and what has come in so far.
class TTransfer {
 public:
  TTransfer(THttpRequest iRequest, THttpClient::TOnFinished iOnFinished)
      : FRequest(std::move(iRequest)), FOnFinished(std::move(iOnFinished)) {}
  ~TTransfer() {
    if (FHandle != nullptr) curl_easy_cleanup(FHandle);
    curl_slist_free_all(FHeaders);
  }
  TTransfer(const TTransfer&) = delete;
  TTransfer& operator=(const TTransfer&) = delete;

  CURL* Handle() const { return FHandle; }

  // What stands against it, empty if it may start.
  TString Prepare() {
    const auto& headers = FRequest.Headers;
    if (!std::all_of(headers.begin(), headers.end(), IsValid)) {
      return u"Eine Kopfzeile der Anfrage ist ungültig";
    }
    FHandle = curl_easy_init();
    if (FHandle == nullptr) return u"Der Speicher reicht nicht";
    SetHeaders();
    SetMethod();
    SetBounds();
    SetRoute();
    Set(CURLOPT_USERAGENT, cUserAgent);
    Set(CURLOPT_ACCEPT_ENCODING, "");  // all that libcurl can unpack
    Set(CURLOPT_COOKIEFILE, "");  // kept for this request: some redirect until a cookie comes back
    Set(CURLOPT_HEADERFUNCTION, &TTransfer::OnHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, &TTransfer::OnBody);
    Set(CURLOPT_WRITEDATA, this);
    return {};
  }

  void Finish(CURLcode iCode) {
    long osError = 0;
    long status = 0;
    const char* address = nullptr;
    const char* contentType = nullptr;
    curl_easy_getinfo(FHandle, CURLINFO_OS_ERRNO, &osError);
    curl_easy_getinfo(FHandle, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(FHandle, CURLINFO_EFFECTIVE_URL, &address);
    curl_easy_getinfo(FHandle, CURLINFO_CONTENT_TYPE, &contentType);
    // Interim answers (100, 103) say nothing of how it ends.
    if (status < cFirstFinalStatus) status = 0;
    FResponse.Status = static_cast<int>(status);
    if (address != nullptr) FResponse.FinalAddress = address;
    if (contentType != nullptr) FResponse.ContentType = contentType;
    // libcurl says the same of an answer that isn't HTTP and of an address that isn't.
    const bool isHttp = FResponse.FinalAddress.starts_with("http");
    if (iCode == CURLE_UNSUPPORTED_PROTOCOL && isHttp) iCode = CURLE_WEIRD_SERVER_REPLY;
    if (iCode != CURLE_OK && FResponse.Failure.empty()) {
      FResponse.Failure = FailureOf(iCode, osError);
    }
    FResponse.TimedOut = iCode == CURLE_OPERATION_TIMEDOUT;
    FResponse.Lost = IsLoss(iCode) && status == 0;
    Report();
  }

  void Fail(TStringView iFailure, bool iCancelled) {
    FResponse.Failure = iFailure;
    FResponse.Cancelled = iCancelled;
    Report();
  }

 private:
  template <class T>
  void Set(CURLoption iOption, T iValue) {
    curl_easy_setopt(FHandle, iOption, iValue);
  }

  void SetHeaders() {
    AddHeader("Accept: " + FRequest.Accept);
    AddHeader("Accept-Language: de,en;q=0.5");
    if (!FRequest.ETag.empty()) AddHeader("If-None-Match: " + FRequest.ETag);
    if (!FRequest.LastModified.empty()) AddHeader("If-Modified-Since: " + FRequest.LastModified);
    for (const auto& [name, value] : FRequest.Headers) AddHeader(name + ": " + value);
    Set(CURLOPT_HTTPHEADER, FHeaders);
  }

  void SetMethod() {
    const THttpMethod method = FRequest.Method;
    if (method == THttpMethod::hmGet) return Set(CURLOPT_FOLLOWLOCATION, 1L);
    if (method == THttpMethod::hmDelete) return Set(CURLOPT_CUSTOMREQUEST, "DELETE");
    Set(CURLOPT_POSTFIELDS, FRequest.Body.data());
    Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(FRequest.Body.size()));
    if (method == THttpMethod::hmPut) Set(CURLOPT_CUSTOMREQUEST, "PUT");
    AddHeader("Content-Type: " + FRequest.ContentType);
    AddHeader("Expect:");  // a server that says nothing to it would cost a second
    Set(CURLOPT_HTTPHEADER, FHeaders);
  }

  void SetRoute() {
    Set(CURLOPT_URL, FRequest.Address.c_str());
    Set(CURLOPT_NOPROXY, ProxyExceptions().c_str());
    if (FRequest.User.empty() && FRequest.Password.empty()) return;
    Set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
    Set(CURLOPT_USERNAME, FRequest.User.c_str());
    Set(CURLOPT_PASSWORD, FRequest.Password.c_str());
  }

  void SetBounds() {
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_QUICK_EXIT, 1L);  // else the end of a request waits for the name server's answer
    Set(CURLOPT_PROTOCOLS_STR, cProtocols);
    Set(CURLOPT_REDIR_PROTOCOLS_STR, cProtocols);
    Set(CURLOPT_MAXREDIRS, static_cast<long>(FRequest.Limits.MaxRedirects));
    Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(FRequest.Limits.ConnectMs));
    Set(CURLOPT_TIMEOUT_MS, static_cast<long>(FRequest.Limits.TotalMs));
  }

  // What is kept of an earlier answer goes out again; it must not bring further lines.
  void AddHeader(std::string iLine) {
    std::erase_if(iLine, IsControl);
    FHeaders = curl_slist_append(FHeaders, iLine.c_str());
  }

  static size_t OnHeader(char* iBytes, size_t, size_t iCount, void* ioTransfer) {
    auto& transfer = *static_cast<TTransfer*>(ioTransfer);
    const std::string_view line(iBytes, iCount);
    transfer.FHeaderBytes += iCount;
    if (transfer.FHeaderBytes > cMaxHeaderBytes) {
      transfer.FResponse.Failure = SizeFailure(transfer.FRequest.Limits.MaxBytes);
      return 0;
    }
    // Each redirect begins anew.
    if (line.starts_with("HTTP/")) {
      transfer.FResponse.ETag.clear();
      transfer.FResponse.LastModified.clear();
      transfer.FResponse.Location.clear();
    }
    HeaderValue(line, "ETag", transfer.FResponse.ETag);
    HeaderValue(line, "Last-Modified", transfer.FResponse.LastModified);
    HeaderValue(line, "Location", transfer.FResponse.Location);
    return iCount;
  }

  static size_t OnBody(char* iBytes, size_t, size_t iCount, void* ioTransfer) {
    auto& transfer = *static_cast<TTransfer*>(ioTransfer);
    const size_t limit = transfer.FRequest.Limits.MaxBytes;
    if (iCount > limit - std::min(limit, transfer.FResponse.Body.size())) {
      transfer.FResponse.Failure = SizeFailure(limit);
      return 0;
    }
    transfer.FResponse.Body.append(iBytes, iCount);
    return iCount;
  }

  void Report() {
    if (!FResponse.Received()) FResponse.Body.clear();
    FOnFinished(std::move(FResponse));
  }

  THttpRequest FRequest;
  THttpClient::TOnFinished FOnFinished;
  THttpResponse FResponse;
  CURL* FHandle = nullptr;
  curl_slist* FHeaders = nullptr;
  size_t FHeaderBytes = 0;
};

}  // namespace

// The thread and its transfers. Requests come in under the lock; all else is the thread's own.
class THttpClient::TWorker {
 public:
  TWorker() {
    static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    FMulti = curl_multi_init();
    if (initialized != CURLE_OK || FMulti == nullptr) {
      throw Exception(u"Die Netzwerkbibliothek ist nicht verfügbar");
    }
  }

  ~TWorker() {
    {
      const std::lock_guard lock(FMutex);
      FStop = true;
    }
    curl_multi_wakeup(FMulti);
    if (FThread.joinable()) FThread.join();
    curl_multi_cleanup(FMulti);
  }

  TRequestId Add(std::unique_ptr<TTransfer> iTransfer) {
    const std::lock_guard lock(FMutex);
    const TRequestId id = ++FLastId;
    FAdded.emplace(id, std::move(iTransfer));
    if (!FThread.joinable()) FThread = std::thread([this] { Run(); });
    curl_multi_wakeup(FMulti);
    return id;
  }

  void Cancel(TRequestId iId) {
    const std::lock_guard lock(FMutex);
    FCancelled.push_back(iId);
    curl_multi_wakeup(FMulti);
  }

  void CancelAll() {
    const std::lock_guard lock(FMutex);
    FCancelledUpTo = FLastId;
    curl_multi_wakeup(FMulti);
  }

 private:
  using TTransfers = std::map<TRequestId, std::unique_ptr<TTransfer>>;

  void Run() {
    while (TakeOrders()) {
      int running = 0;
      curl_multi_perform(FMulti, &running);
      FinishDone();
      // Orders wake it; libcurl's own time limits shorten it.
      curl_multi_poll(FMulti, nullptr, 0, 1000, nullptr);
    }
    CancelWhere([](TRequestId) { return true; });
  }

  // Starts and cancels what was asked for since the last turn. False when it is time to end.
  bool TakeOrders() {
    TTransfers added;
    std::vector<TRequestId> cancelled;
    TRequestId cancelledUpTo = 0;
    bool stop = false;
    {
      const std::lock_guard lock(FMutex);
      added.swap(FAdded);
      cancelled.swap(FCancelled);
      cancelledUpTo = FCancelledUpTo;
      stop = FStop;
    }
    for (auto& [id, transfer] : added) Start(id, std::move(transfer));
    CancelWhere([&](TRequestId iId) {
      return iId <= cancelledUpTo ||
             std::find(cancelled.begin(), cancelled.end(), iId) != cancelled.end();
    });
    return !stop;
  }

  void Start(TRequestId iId, std::unique_ptr<TTransfer> iTransfer) {
    const TString failure = iTransfer->Prepare();
    if (!failure.empty()) return iTransfer->Fail(failure, false);
    if (curl_multi_add_handle(FMulti, iTransfer->Handle()) != CURLM_OK) {
      return iTransfer->Fail(u"Der Speicher reicht nicht", false);
    }
    FRunning.emplace(iId, std::move(iTransfer));
  }

  template <class Predicate>
  void CancelWhere(Predicate iPredicate) {
    for (auto entry = FRunning.begin(); entry != FRunning.end();) {
      if (!iPredicate(entry->first)) {
        ++entry;
        continue;
      }
      curl_multi_remove_handle(FMulti, entry->second->Handle());
      entry->second->Fail(u"Abgebrochen", true);
      entry = FRunning.erase(entry);
    }
  }

  void FinishDone() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(FMulti, &left)) {
      if (message->msg != CURLMSG_DONE) continue;
      CURL* const handle = message->easy_handle;
      const CURLcode code = message->data.result;
      const auto entry = std::find_if(FRunning.begin(), FRunning.end(), [&](const auto& iEntry) {
        return iEntry.second->Handle() == handle;
      });
      curl_multi_remove_handle(FMulti, handle);
      entry->second->Finish(code);
      FRunning.erase(entry);
    }
  }

  CURLM* FMulti = nullptr;
  std::thread FThread;
  TTransfers FRunning;

  std::mutex FMutex;  // guards all below
  TTransfers FAdded;
  std::vector<TRequestId> FCancelled;
  TRequestId FLastId = 0;
  TRequestId FCancelledUpTo = 0;
  bool FStop = false;
};

THttpClient::THttpClient() : FWorker(std::make_unique<TWorker>()) {}

THttpClient::~THttpClient() = default;

THttpClient::TRequestId THttpClient::Send(THttpRequest iRequest, TOnFinished iOnFinished) {
  return FWorker->Add(std::make_unique<TTransfer>(std::move(iRequest), std::move(iOnFinished)));
}

void THttpClient::Cancel(TRequestId iRequest) { FWorker->Cancel(iRequest); }

void THttpClient::CancelAll() { FWorker->CancelAll(); }

}  // namespace kk
