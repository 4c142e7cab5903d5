// The section parser.
#include "front/load.h"
#include "front/settings.h"
#include "front/trace.h"
#include "parser/conf_parser.h"
#include "tree/limits.h"
#include "tree/root_section.h"

namespace confgrove {

ConfParser::ConfParser(const std::string& input, RootSection* target, std::int32_t depth)
    : at(input.data()), end(input.data() + input.size()), root(target), import_depth(depth) {}

std::int32_t ConfParser::ParseBody(RealSection* body) {
  bodies.push_back({body != nullptr ? body : root, nullptr, body == nullptr});
  while (!bodies.empty()) {
    Body& here = bodies.back();
    switch (NextToken()) {
      case TokenName:
        BeginSection(here);
        if (!bodies.empty() && TakeAssign()) Assign(here);
        break;
      case TokenAssign: Assign(here); break;
      case TokenComment: TakeComment(here); break;
      case TokenOpenBody: EnterBody(here); break;
      case TokenCloseBody:
        LeaveBody(here);
        bodies.pop_back();
        break;
      case TokenEnd:
        if (!here.file_level) ReportError("unexpected end of file");
        bodies.pop_back();
        break;
      case TokenDollar:
        if (!ParseImport(here)) bodies.pop_back();
        break;
      default: ReportError("syntax error");
    }
  }
  return ErrorCount;
}

void ConfParser::BeginSection(Body& body) {
  if (previous_token == TokenName) {
    ReportError("expected '=' or '{'");
    return;
  }
  if (body.section->FindChild(text) != nullptr) {
    ReportError("section redefinition");
    return;
  }
  if (bodies.size() > static_cast<std::size_t>(MaxDepth)) {
    ReportError("nesting too deep");
    bodies.clear();  // one message is enough: nobody reads on, and no body misses its end
    return;
  }
  body.last = body.section->AddChild(text, body.section->read_only);
  if (pending_comment.empty()) return;
  body.last->SetComment(pending_comment, false);
  pending_comment.clear();
}

void ConfParser::Assign(Body& body) {
  if (previous_token != TokenName) {
    ReportError("unexpected '='");
  } else if (body.last != nullptr) {
    ParseValue(body.last);
  }
}

void ConfParser::ParseValue(RealSection* target) {
  switch (NextToken()) {
    case TokenLink:
      if (root->FindSection(text) == nullptr) ReportError("link to undefined section");
      target->AssignText(SectionType::Link, text);
      break;
    case TokenString: target->AssignText(SectionType::String, text); break;
    case TokenNumber: target->AssignNumbers(&number, 1); break;
    case TokenOpenArray: ParseArray(target); break;
    default: ReportError("expected number or \"string\" (may be array) after '='");
  }
}

void ConfParser::ParseArray(RealSection* target) {
  array.clear();
  bool comma = false;
  while (NextToken() != TokenCloseArray) {
    if (token == TokenNumber) {
      array.push_back(number);
      comma = false;
    } else if (token == TokenComma) {
      comma = true;
    } else if (token == TokenEnd) {
      ReportError("unexpected end of file");
      return;
    } else {
      ReportError("syntax error in array declaration");
    }
  }
  if (comma) ReportWarning("unnecessary comma before ']'");
  if (array.empty()) {
    array.push_back(0);
    ReportWarning("empty array declaration, setting zero value");
  }
  target->AssignNumbers(array.data(), array.size());
}

void ConfParser::TakeComment(Body& body) {
  const bool is_inline = number == 1;
  if (is_inline && body.last != nullptr) {
    body.last->SetComment(text, true);
  } else {
    pending_comment.append(text).push_back('\n');
  }
}

void ConfParser::EnterBody(Body& body) {
  if (!pending_comment.empty()) ReportWarning("comment will be assigned to next section");
  if (body.last != nullptr) bodies.push_back({body.last, nullptr, false});
}

void ConfParser::LeaveBody(const Body& body) {
  if (body.file_level || previous_token == TokenName) ReportError("unexpected '}'");
  if (!pending_comment.empty()) ReportWarning("comment skipped");
  pending_comment.clear();
  if (previous_token == TokenOpenBody) ReportWarning("blank section");
}

bool ConfParser::ParseImport(const Body& body) {
  if (NextToken() != TokenName) {
    ReportError("syntax error after $");
    return false;
  }
  if (text != "import") {
    ReportError("undefined directive after $");
    return false;
  }
  if (!body.file_level) ReportWarning("$import must be as possible in root section");
  if (NextToken() != TokenString) {
    ReportError("expected \"filename\" after $import directive");
    return true;
  }
  const std::string name(text);
  if (ImportStack().Contains(name)) {
    ReportError("recursive $import");
    return false;
  }
  if (import_depth >= MaxImportDepth) {
    ReportError("imports nested too deep");
    return true;
  }
  std::unique_ptr<RootSection> imported = LoadFile(name, true, import_depth + 1);
  if (imported == nullptr) {
    ReportError("cannot parse import file");
    return true;
  }
  root->SetComment(pending_comment, false);
  pending_comment.clear();
  root->Attach(imported.get());
  static_cast<void>(imported.release());  // the root owns it now
  return true;
}

std::int32_t ConfParser::ReportError(const char* message) {
  ++ErrorCount;
  TraceHandler(LevelError, "%s(%d), error: %s", Label().c_str(), line, message);
  return ErrorCount;
}

void ConfParser::ReportWarning(const char* message) {
  ++WarningCount;
  if (TraceLevel > 0) {
    TraceHandler(LevelWarning, "%s(%d), warning: %s", Label().c_str(), line, message);
  }
}

// The file as messages name it; the extension is always appended.
std::string ConfParser::Label() const {
  return RootDirectory() + root->name.str() + DefaultExtension();
}

}  // namespace confgrove
