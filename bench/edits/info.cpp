#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "edit.h"

namespace edits {

void Make(Change change, const std::string& file) {
  boost::property_tree::ptree tree;
  boost::property_tree::read_info(file, tree);
  switch (change) {
    case Change::Set: tree.put("server.port", 9090); break;
    case Change::Add: tree.put("server.backlog", 16); break;
    case Change::Remove: tree.get_child("limits").erase("legacy"); break;
  }
  boost::property_tree::write_info(file, tree);
}

}  // namespace edits
