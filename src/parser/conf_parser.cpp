// The section parser.
#include "parser/conf_parser.h"

#include <memory>

#include "base/limits.h"
#include "base/settings.h"
#include "base/trace.h"
#include "parser/load.h"
#include "tree/root_section.h"

namespace confgrove {

ConfParser::ConfParser(std::string_view input, TextSource* source, RootSection* root,
                       std::int32_t depth, Load* load, Record* record)
    : lexer_(input, source, this), root_(root), import_depth_(depth), load_(load) {
  if (record != nullptr) recorder_.emplace(lexer_, record);
}

void ConfParser::Parse() {
  bodies_.push_back({root_, nullptr, true});
  while (!bodies_.empty()) {
    Body& here = bodies_.back();
    switch (lexer_.Next()) {
      case TokenName:
        BeginSection(here);
        if (!bodies_.empty() && lexer_.TakeAssign()) Assign(bodies_.back());
        break;
      case TokenAssign: Assign(here); break;
      case TokenComment: TakeComment(here); break;
      case TokenOpenBody: EnterBody(here); break;
      case TokenCloseBody: LeaveBody(here); break;
      case TokenEnd:
        if (!here.file_level) Error("unexpected end of file");
        EndBody();
        break;
      case TokenDollar:
        if (!ParseImport(here) && !ReadsOn()) EndBody();
        break;
      default:
        Error("syntax error");
        if (recorder_) recorder_->Ignore();
    }
  }
}

// The body at hand would end though its end isn't there. True if the load reads on nevertheless.
bool ConfParser::ReadsOn() {
  if (!load_->reads_on || (bodies_.size() > 1 && !recorder_->stopped())) return false;
  recorder_->Stop();
  return true;
}

// Passes over the rest of the body at hand.
void ConfParser::SkipBody() {
  recorder_->Stop();
  for (std::int32_t open = 1; open > 0;) {
    switch (lexer_.Next()) {
      case TokenOpenBody: ++open; break;
      case TokenCloseBody: open -= lexer_.IsIllegal() ? 0 : 1; break;
      case TokenEnd: return;
      default: break;
    }
  }
  recorder_->CloseBody();
  EndBody();
}

void ConfParser::EndBody() {
  if (Children* const children = bodies_.back().section->children) children->Trim();
  bodies_.pop_back();
  if (recorder_) recorder_->EndBody();
}

void ConfParser::BeginSection(Body& body) {
  if (lexer_.previous_kind == TokenName) return IgnoreName("expected '=' or '{'");
  if (bodies_.size() > static_cast<std::size_t>(MaxDepth)) {
    Error("nesting too deep");
    if (load_->reads_on) return SkipBody();
    bodies_.clear();  // one message is enough: nobody reads on, and no body misses its end
    return;
  }
  RealSection* const made = body.section->AddChild(lexer_.bytes, body.section->read_only);
  if (made == nullptr) return IgnoreName("section redefinition");
  if (recorder_) recorder_->Name();
  body.last = made;
  if (pending_comment_.empty()) return;
  made->SetComment(pending_comment_, false);
  pending_comment_.clear();
}

void ConfParser::IgnoreName(const char* fault) {
  Error(fault);
  if (recorder_) recorder_->Ignore();
}

void ConfParser::Assign(Body& body) {
  if (lexer_.previous_kind != TokenName) {
    Error("unexpected '='");
    if (recorder_) recorder_->Ignore();
    return;
  }
  if (recorder_) recorder_->Assign();
  if (body.last != nullptr) ParseValue(body.last);
}

void ConfParser::ParseValue(RealSection* target) {
  const TokenKind kind = lexer_.Next();
  if (recorder_) recorder_->BeginValue();
  switch (kind) {
    case TokenLink:
      if (root_->FindSection(lexer_.bytes) == nullptr) Error("link to undefined section");
      target->AssignText(SectionType::Link, lexer_.bytes);
      break;
    case TokenString: target->AssignText(SectionType::String, lexer_.bytes); break;
    case TokenNumber: target->AssignNumbers(&lexer_.number, 1); break;
    case TokenOpenArray: ParseArray(target); break;
    default: Error("expected number or \"string\" (may be array) after '='");
  }
  if (recorder_) recorder_->EndValue();
}

void ConfParser::ParseArray(RealSection* target) {
  array_.clear();
  bool comma = false;
  while (lexer_.Next() != TokenCloseArray) {
    if (lexer_.kind == TokenNumber) {
      array_.push_back(lexer_.number);
      comma = lexer_.TakeComma();
    } else if (lexer_.kind == TokenComma) {
      comma = true;
    } else if (lexer_.kind == TokenEnd) {
      Error("unexpected end of file");
      return;
    } else {
      Error("syntax error in array declaration");
    }
  }
  if (comma) Warning("unnecessary comma before ']'");
  if (array_.empty()) {
    array_.push_back(0);
    Warning("empty array declaration, setting zero value");
  }
  target->AssignNumbers(array_.data(), array_.size());
}

void ConfParser::TakeComment(Body& body) {
  if (lexer_.inline_comment && body.last != nullptr) {
    body.last->SetComment(lexer_.bytes, true);
    if (recorder_) recorder_->InlineComment();
  } else {
    pending_comment_.append(lexer_.bytes).push_back('\n');
    if (recorder_) recorder_->PendingComment();
  }
}

void ConfParser::EnterBody(Body& body) {
  if (!pending_comment_.empty()) Warning("comment will be assigned to next section");
  if (body.last == nullptr) {  // the brace means nothing, and its partner closes this body
    if (recorder_) recorder_->Ignore();
    return;
  }
  if (recorder_) recorder_->OpenBody();
  bodies_.push_back({body.last, nullptr, false});
}

void ConfParser::LeaveBody(const Body& body) {
  if (recorder_ && recorder_->stopped() && lexer_.IsIllegal()) return recorder_->Ignore();
  if (body.file_level || lexer_.previous_kind == TokenName) Error("unexpected '}'");
  if (!pending_comment_.empty()) Warning("comment skipped");
  pending_comment_.clear();
  if (lexer_.previous_kind == TokenOpenBody) Warning("blank section");
  if (recorder_) {
    recorder_->DropPending();
    recorder_->CloseBody();
  }
  if (!body.file_level || !ReadsOn()) EndBody();
}

// The directive has begun with its '$'.
bool ConfParser::ParseImport(const Body& body) {
  if (recorder_) recorder_->BeginImport();
  bool carried_out = false;
  const bool goes_on = [&] {
    if (lexer_.Next() != TokenName) {
      Error("syntax error after $");
      return false;
    }
    if (lexer_.bytes != "import") {
      Error("undefined directive after $");
      return false;
    }
    if (!body.file_level) Warning("$import must be as possible in root section");
    if (lexer_.Next() != TokenString) {
      Error("expected \"filename\" after $import directive");
      return true;
    }
    if (recorder_ && recorder_->stopped()) return true;
    const std::string name(lexer_.bytes);
    if (load_->files.Contains(name)) {
      Error("recursive $import");
      return false;
    }
    carried_out = Import(name);
    return true;
  }();
  if (recorder_) recorder_->EndImport(carried_out);
  return goes_on;
}

// Takes the file in, and what is pending for its comment. False, with a message, if it can't be.
bool ConfParser::Import(const std::string& name) {
  if (import_depth_ >= MaxImportDepth) {
    Error("imports nested too deep");
    return false;
  }
  std::unique_ptr<RootSection> imported = LoadFile(load_, name, true, import_depth_ + 1);
  if (imported == nullptr) {
    Error("cannot parse import file");
    return false;
  }
  root_->SetComment(pending_comment_, false);
  pending_comment_.clear();
  root_->Attach(imported.get());
  static_cast<void>(imported.release());  // the root owns it now
  return true;
}

void ConfParser::Error(const char* message) { ReportError(message, lexer_.Begin(), lexer_.End()); }

void ConfParser::Warning(const char* message) {
  ReportWarning(message, lexer_.Begin(), lexer_.End());
}

void ConfParser::ReportError(const char* message, std::size_t begin, std::size_t end) {
  ++load_->errors;
  if (recorder_) recorder_->AddFault(true, message, begin, end);
  TraceHandler(LevelError, "%s(%d), error: %s", FileLabel(std::string(root_->name())).c_str(),
               lexer_.line, message);
}

void ConfParser::ReportWarning(const char* message, std::size_t begin, std::size_t end) {
  ++load_->warnings;
  if (recorder_) recorder_->AddFault(false, message, begin, end);
  if (TraceLevel > 0) {
    TraceHandler(LevelWarning, "%s(%d), warning: %s", FileLabel(std::string(root_->name())).c_str(),
                 lexer_.line, message);
  }
}

void ConfParser::PassOver(Passed what, std::size_t begin, std::size_t end) {
  if (recorder_) recorder_->PassOver(what, begin, end);
}

}  // namespace confgrove
