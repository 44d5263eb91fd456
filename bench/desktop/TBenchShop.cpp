#include "bench/desktop/TBenchShop.h"

#include <httplib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <stdexcept>

namespace kk {
namespace {

constexpr char cHost[] = "127.0.0.1";
constexpr int cParagraphs = 200;

std::string PageOf(const std::string& iNumber, int iCall) {
  std::string page =
      "<!DOCTYPE html><html lang=\"de\"><head><title>Artikel</title>"
      "<script type=\"application/ld+json\">{\"@context\": \"https://schema.org\", \"@type\": "
      "\"Product\", \"name\": \"Artikel " +
      iNumber + "\", \"offers\": {\"@type\": \"Offer\", \"price\": \"" +
      std::to_string(1 + iCall % 900) +
      ".99\", \"priceCurrency\": \"EUR\", \"availability\": \"https://schema.org/InStock\"}}"
      "</script></head><body>";
  for (int i = 0; i < cParagraphs; ++i) {
    page +=
        "<p class=\"text\">Ein gut erhaltenes St\u00fcck aus zweiter Hand, ohne Gew\u00e4hr. "
        "<a href=\"/mehr\">Mehr</a></p>\n";
  }
  return page + "</body></html>";
}

[[noreturn]] void Serve(int iPipe) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  httplib::Server server;
  server.set_tcp_nodelay(true);
  std::atomic<int> calls{0};
  server.Get(R"(/artikel/(\d+))", [&](const httplib::Request& iRequest,
                                      httplib::Response& oResponse) {
    oResponse.set_content(PageOf(iRequest.matches[1].str(), ++calls), "text/html; charset=utf-8");
  });
  const int port = server.bind_to_any_port(cHost);
  if (write(iPipe, &port, sizeof port) == sizeof port) server.listen_after_bind();
  _exit(0);
}

}  // namespace

TBenchShop::TBenchShop() {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  FProcess = fork();
  if (FProcess == 0) Serve(ends[1]);
  close(ends[1]);
  int port = 0;
  const bool isThere = FProcess > 0 && read(ends[0], &port, sizeof port) == sizeof port;
  close(ends[0]);
  if (!isThere) throw std::runtime_error("no shop");
  FOrigin = "http://" + std::string(cHost) + ":" + std::to_string(port);
}

TBenchShop::~TBenchShop() {
  kill(FProcess, SIGKILL);
  waitpid(FProcess, nullptr, 0);
}

}  // namespace kk
