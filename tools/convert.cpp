// convert: prints the settings of a file of another format in ours.
#include <memory>

#include "convert/convert.h"

#include "commands.h"

namespace confgrove::Tool {

void AddConvert(Command* tool) {
  const auto request = std::make_shared<ConvertRequest>();
  Command convert =
      tool->AddCommand("convert", "Print the settings of a file of another format in ours");
  convert.AddText("FILE", &request->file, "The file to convert").Require();
  convert.AddText("--from", &request->from, "Its format").Require().TakeOneOf(ConvertFormats());
  convert.AddFlag("--rename", &request->rename, "Put _ for what names can't hold, such as -");
  convert.SetAction([request] { return Convert(*request); });
}

}  // namespace confgrove::Tool
