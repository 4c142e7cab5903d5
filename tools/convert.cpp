// convert: prints the settings of a file of another format in ours.
#include "convert/convert.h"

#include "commands.h"

namespace confgrove::Tool {

void AddConvert(CLI::App* app, Action* action) {
  const auto request = std::make_shared<ConvertRequest>();
  CLI::App* const convert =
      app->add_subcommand("convert", "Print the settings of a file of another format in ours");
  AddText(convert, "FILE", &request->file, "The file to convert")->required();
  AddText(convert, "--from", &request->from, "Its format")
      ->required()
      ->check(CLI::IsMember(ConvertFormats()));
  convert->add_flag("--rename", request->rename, "Put _ for what names can't hold, such as -");
  convert->callback([=] { *action = [request] { return Convert(*request); }; });
}

}  // namespace confgrove::Tool
