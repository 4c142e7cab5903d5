// The edits of the $import lines, and of the head comment that goes with the last of them.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lexer/char_class.h"
#include "text/editing.h"
#include "text/section_text.h"
#include "text/value_text.h"

namespace confgrove {
namespace {

struct ImportLine {
  std::size_t piece;
  Span name;  // between the quotes
};

std::vector<ImportLine> ImportLines(const FileText& file) {
  std::vector<ImportLine> lines;
  for (std::size_t i = 0; i < file.record.pieces.size() && lines.size() < file.import_count; ++i) {
    const Piece& piece = file.record.pieces[i];
    if (piece.kind != PieceKind::Import) continue;
    const std::string_view bytes = file.Bytes({piece.begin, piece.end});
    const std::size_t open = bytes.substr(0, bytes.size() - 1).rfind('"');
    lines.push_back({i, {piece.begin + open + 1, piece.end - 1}});
  }
  return lines;
}

std::string LineOf(std::string_view name) { return "$import \"" + std::string(name) + '"'; }

void RemoveLine(const ImportLine& line, Editing* editing) {
  const FileText& file = editing->file;
  const Piece& piece = file.record.pieces[line.piece];
  if (!file.BeginsLine(line.piece) || !file.EndsLine(piece.end)) {
    editing->splices.Remove({piece.begin, piece.end});
    return;
  }
  // What stands above would come to stand above the next section: a blank line keeps it apart.
  const bool comment_above = file.FirstDirectComment(line.piece) < line.piece;
  const std::size_t begin = file.LineBegin(line.piece);
  const std::size_t end = file.NextLine(piece.end);
  editing->splices.Put({begin, end}, comment_above && end < file.text.size() ? "\n" : "");
}

// A comment belongs to the root only if it stands in front of the last import. So a new line goes
// behind the last one where there is none, and to the top of the file otherwise.
void AddLines(const std::vector<std::string_view>& names, bool has_head, Editing* editing) {
  const FileText& file = editing->file;
  std::string lines;
  for (const std::string_view name : names) lines.append(LineOf(name)) += '\n';
  if (file.import_count == 0 || has_head) {
    const bool gap = file.import_count == 0 && !file.text.empty() && !IsLineEnd(file.text.front());
    editing->splices.Put({0, 0}, lines + (gap ? "\n" : ""));
    return;
  }
  const std::size_t end = file.record.pieces[file.last_import].end;
  lines.pop_back();
  editing->splices.Put({end, end}, '\n' + lines);
}

void EditHead(const RootSection& root, Editing* editing) {
  const FileText& file = editing->file;
  const std::string_view wanted = root.comment().view();
  if (SameComment(file, 0, wanted)) return;
  editing->Refuse(root, FaultOfComments(root));
  const std::string lines = CommentLines(wanted, "");
  if (file.import_count == 0) {
    editing->splices.Put({0, 0}, lines + '\n');
    return;
  }
  const std::size_t import = file.last_import;
  std::size_t first = import;
  while (first > 0 && file.record.pieces[first - 1].kind == PieceKind::CommentAbove &&
         file.record.pieces[first - 1].section == 0) {
    --first;
  }
  const std::size_t end = file.LineBegin(import);
  const std::size_t begin = first < import ? file.LineBegin(first) : end;
  editing->splices.Put({begin, end}, lines);
}

}  // namespace

void EditImports(const RootSection& root, Editing* editing) {
  const FileText& file = editing->file;
  EditHead(root, editing);
  const auto& in_file = file.root()->imports;
  std::vector<std::string_view> fresh;
  for (const auto& [name, imported] : root.imports) {
    if (imported != nullptr && in_file.count(name) == 0) fresh.push_back(name);
  }
  for (const std::string_view name : fresh) editing->Refuse(root, FaultOfImport(name));
  std::size_t used = 0;
  for (const ImportLine& line : ImportLines(file)) {
    const auto wanted = root.imports.find(file.Bytes(line.name));
    if (wanted != root.imports.end() && wanted->second != nullptr) continue;
    if (used < fresh.size()) {
      editing->splices.Put(line.name, std::string(fresh[used++]));
    } else {
      RemoveLine(line, editing);
    }
  }
  fresh.erase(fresh.begin(), fresh.begin() + static_cast<std::ptrdiff_t>(used));
  if (!fresh.empty()) AddLines(fresh, !root.comment().empty(), editing);
}

}  // namespace confgrove
