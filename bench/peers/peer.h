// What every library is asked to do, and how it joins the comparison.
#ifndef CONFGROVE_BENCH_PEERS_PEER_H
#define CONFGROVE_BENCH_PEERS_PEER_H

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tree_generator.h"

namespace bench {

// What reading a name comes to: where it ends, and a byte of it.
inline std::size_t Seen(std::string_view name) {
  return name.size() + static_cast<unsigned char>(name.front());
}

// One library at work on one tree at a time. It throws if the library refuses.
class Peer {
 public:
  virtual ~Peer() = default;

  // The tree in the library's own format, its comments too where the format has any.
  virtual std::string Text(const Node& tree) = 0;

  // Reads a file of such text, from opening it on, and makes the tree of it.
  virtual void Load(const std::string& file) = 0;

  // Finds the block that each query starts from. `queries` outlive the loaded tree.
  virtual void Bind(const std::vector<Query>& queries) = 0;

  // The number that a query asks for, found from its block by three names; and a new one for it.
  virtual double Get(std::size_t query) = 0;
  virtual void Set(std::size_t query, double value) = 0;

  // Reads the names of the children of the block outer.inner in order. The sum of what was Seen.
  virtual std::size_t List() = 0;

  // Writes the tree to a file beside the one it was loaded from, and destroys it.
  virtual void Write(const std::string& file) = 0;
  virtual void Destroy() = 0;
};

// A peer that holds a block as a `Handle`, which is copied but never assigned.
template <class Handle>
class PeerWith : public Peer {
 public:
  void Bind(const std::vector<Query>& all) final {
    queries = &all;
    bases.clear();
    bases.reserve(all.size());
    for (const Query& query : all) bases.push_back(Find(Root(), query.base, 0));
  }

 protected:
  virtual Handle Root() = 0;
  virtual Handle Child(Handle block, const std::string& name) = 0;

  Handle WideBlock() { return Find(Root(), {"outer", "inner"}, 0); }

  const std::vector<Query>* queries = nullptr;
  std::vector<Handle> bases;  // for each query

 private:
  Handle Find(Handle block, const std::vector<std::string>& names, std::size_t first) {
    return first == names.size() ? block : Find(Child(block, names[first]), names, first + 1);
  }
};

struct PeerEntry {
  std::string name;
  std::function<std::unique_ptr<Peer>()> make;
};

// All that this program was built with.
inline std::vector<PeerEntry>& Peers() {
  static std::vector<PeerEntry> peers;
  return peers;
}

// A static one in each peer's file is all that a peer needs to join.
template <class Implementation>
struct Registration {
  template <class... Arguments>
  explicit Registration(const char* name, Arguments... arguments) {
    Peers().push_back({name, [=] { return std::make_unique<Implementation>(arguments...); }});
  }
};

}  // namespace bench

#endif
