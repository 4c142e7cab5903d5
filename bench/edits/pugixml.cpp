#include <pugixml.hpp>
#include <stdexcept>

#include "edit.h"

namespace edits {

// Of itself it reads no comments and lays the file out anew. Asked to, it reads them and the blanks
// between elements too, and writes both as they are.
#ifdef EDITS_KEEP_BLANKS
constexpr unsigned ReadFlags = pugi::parse_full | pugi::parse_ws_pcdata;
constexpr unsigned WriteFlags = pugi::format_raw | pugi::format_no_declaration;
#else
constexpr unsigned ReadFlags = pugi::parse_default;
constexpr unsigned WriteFlags = pugi::format_default | pugi::format_no_declaration;
#endif

void Make(Change change, const std::string& file) {
  pugi::xml_document document;
  if (!document.load_file(file.c_str(), ReadFlags)) {
    throw std::runtime_error("can't be read");
  }
  pugi::xml_node settings = document.document_element();
  pugi::xml_node server = settings.child("server");
  switch (change) {
    case Change::Set: server.child("port").text().set(9090); break;
    case Change::Add: server.append_child("backlog").text().set(16); break;
    case Change::Remove: settings.child("limits").remove_child("legacy"); break;
  }
  document.save_file(file.c_str(), "\t", WriteFlags);
}

}  // namespace edits
