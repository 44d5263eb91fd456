#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/base/TString.h"

namespace kk {

/// A little shop on this machine, for the demonstration and for tests: an article, one on sale and
/// an auction, each on a page that says its data in another of the ways in which real shops do. The
/// price of an article changes each time its page is asked for. It serves from its making to its
/// end on a thread of its own, on the loopback address and a port that is free.
class TExampleShop {
 public:
  /// Raises Exception if no port can be had.
  TExampleShop();
  ~TExampleShop();
  TExampleShop(const TExampleShop&) = delete;
  TExampleShop& operator=(const TExampleShop&) = delete;

  /// "http://127.0.0.1:40123".
  TString Address() const;
  /// The addresses of the articles, complete.
  std::vector<TString> Articles() const;

 private:
  class TServer;
  std::unique_ptr<TServer> FServer;
};

}  // namespace kk
