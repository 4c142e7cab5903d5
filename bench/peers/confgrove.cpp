#include <confgrove/confgrove.h>

#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "peer.h"

namespace bench {
namespace {

class Confgrove : public PeerWith<Section*> {
 public:
  std::string Text(const Node& tree) override { return ConfigurationText(tree); }

  void Load(const std::string& file) override {
    config.reset(ConfCreate(file.c_str(), ConfCreateOpen, ConfNameFullPath));
    if (config == nullptr) throw std::runtime_error("confgrove cannot read " + file);
  }

  double Get(std::size_t query) override {
    double value = std::nan("");
    bases[query]->GetDouble(&value, (*queries)[query].path.c_str());
    return value;
  }

  void Set(std::size_t query, double value) override {
    bases[query]->SetDouble(value, (*queries)[query].path.c_str());
  }

  std::size_t List() override {
    Section* block = WideBlock();
    const std::int32_t count = block->GetSectionCount("");
    std::size_t sum = 0;
    for (std::int32_t i = 0; i < count; ++i) sum += Seen(block->GetName("", i));
    return sum;
  }

  // A root writes to the file of its name, in the directory and with the extension of the file
  // that was opened.
  void Write(const std::string& file) override {
    config->SetName(std::filesystem::path(file).stem().string().c_str(), "");
    if (!config->Save()) throw std::runtime_error("confgrove cannot write " + file);
  }

  void Destroy() override { config.reset(); }

 protected:
  Section* Root() override { return config.get(); }
  Section* Child(Section* block, const std::string& name) override {
    return block->GetSection(name.c_str());
  }

 private:
  std::unique_ptr<Config> config;
};

const Registration<Confgrove> Entry("confgrove");

}  // namespace
}  // namespace bench
