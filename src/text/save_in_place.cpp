// Saving in place, and the other ways to change a file that is there.
#include <confgrove/save_in_place.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "base/settings.h"
#include "platform/platform.h"
#include "text/canonical.h"
#include "text/file_text.h"
#include "text/replace_file.h"
#include "text/tree_edits.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

// A text of ours as the system's text files hold it. A CR in front of a line end that is a mere LF
// would be read as a part of it: that line ends in CR LF.
std::string ForDisk(const std::string& text) {
  std::string bytes;
  for (const char c : text) {
    if (c == '\n' && !bytes.empty() && bytes.back() == '\r') {
      bytes.append("\r\n");
    } else if (c == '\n') {
      bytes.append(Platform::line_end);
    } else {
      bytes += c;
    }
  }
  return bytes;
}

// The one edit that makes `after` of `before`: what is the same at both ends stays.
std::vector<Edit> EditBetween(const std::string& before, const std::string& after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  std::size_t same = 0;
  while (same < shorter && before[same] == after[same]) ++same;
  std::size_t behind = 0;
  while (behind < shorter - same &&
         before[before.size() - 1 - behind] == after[after.size() - 1 - behind]) {
    ++behind;
  }
  if (same == before.size() && same == after.size()) return {};
  return {{same, before.size() - same - behind, after.substr(same, after.size() - same - behind)}};
}

// One run of a command that changes a file.
class FileChange {
 public:
  FileChange(const std::string& path, bool preview) : replacement_(path), preview_(preview) {
    result_.file = path;
    result_.reason = replacement_.Read(&bytes_, &stamp_);
  }

  bool failed() const { return !result_.reason.empty(); }
  const Platform::FileStamp& stamp() const { return stamp_; }
  const std::string& bytes() const { return bytes_; }

  void Refuse(std::string reason) { result_.reason = std::move(reason); }
  void NoteChanged() { result_.file_changed = true; }
  void Refuse(Obstacle obstacle) {
    result_.reason = std::move(obstacle.reason);
    result_.section = std::move(obstacle.section);
  }
  void RefuseFaulty(const FileText& file) {
    const Fault* const error = file.FirstError();
    result_.line = error != nullptr ? error->line : 0;
    Refuse(error != nullptr
               ? "it is faulty, line " + std::to_string(error->line) + ": " + error->message
               : "a file that it imports can't be read");
  }

  // Makes the edits, whose result is `after`.
  void Make(std::vector<Edit> edits, const std::string& after,
            std::vector<EmptiedBlock> emptied = {}) {
    if (failed()) return;
    result_.edits = std::move(edits);
    result_.emptied = std::move(emptied);
    const bool missing = !stamp_.exists;
    if (result_.edits.empty() && !missing) {
      result_.outcome = SaveOutcome::Unchanged;
      return;
    }
    if (!preview_) result_.reason = replacement_.Put(after);
    if (replacement_.has_changed()) NoteChanged();
    if (failed()) return;
    result_.outcome = SaveOutcome::Written;
    if (!preview_) stamp_ = Platform::GetStamp(result_.file);
  }

  SaveResult Result() && {
    if (failed()) {
      result_.outcome = SaveOutcome::Refused;
      result_.edits.clear();
      result_.emptied.clear();
    }
    return std::move(result_);
  }

 private:
  FileReplacement replacement_;
  const bool preview_;
  std::string bytes_;
  Platform::FileStamp stamp_;
  SaveResult result_;
};

bool EndsCutOff(const FileText& file) {
  return !file.record.pieces.empty() && file.record.pieces.back().kind == PieceKind::CutOff;
}

// Lets the file end in a line end, without which its last token would be lost.
void AddLineEnd(const FileText& before, std::vector<Edit>* edits) {
  const std::size_t size = before.bytes.size();
  const bool has_pairs = before.bytes.find("\r\n") != std::string::npos;
  const bool has_any = before.bytes.find('\n') != std::string::npos;
  if (edits->empty() || edits->back().offset + edits->back().length < size) {
    edits->push_back({size, 0, ""});
  }
  edits->back().text += has_pairs ? "\r\n" : has_any ? "\n" : Platform::line_end;
}

// What a file would say if it held these bytes.
class Proof {
 public:
  Proof(const std::string& bytes, const FileOrigin& origin, const RootSection& root)
      : after_(bytes, origin), root_(root) {
    obstacle_ = after_.root() != nullptr ? FirstDifference(after_, root) : WhyUnreadable();
  }

  // Why it isn't what the tree says; no reason if it is.
  const Obstacle& obstacle() const { return obstacle_; }

  bool cut_off() const { return EndsCutOff(after_); }

  // The sections that have lost the inline comment behind their body: on its line a name must
  // stand.
  std::vector<const RealSection*> Displaced() const {
    if (after_.root() == nullptr) return {};
    return WithoutInlineComment(after_, root_);
  }

 private:
  Obstacle WhyUnreadable() const {
    const Fault* const error = after_.FirstError();
    if (error == nullptr) return {"", "a file that it imports can't be read"};
    std::string section;
    for (std::size_t i = std::min(error->pieces, after_.record.pieces.size()); i > 0; --i) {
      const Piece& piece = after_.record.pieces[i - 1];
      if (piece.section == 0) continue;
      section = after_.NameOf(piece.section);
      break;
    }
    return {section, "what would be written can't be read: " + std::string(error->message)};
  }

  const FileText after_;
  const RootSection& root_;
  Obstacle obstacle_;
};

// Whether it says what the tree says, to the last comment: as a rule it does. The end of the file
// is left to the others.
bool IsProven(const std::string& bytes, const FileOrigin& origin, const RootSection& root) {
  if (bytes.empty() || bytes.back() != '\n') return false;
  const std::unique_ptr<RootSection> tree = TreeOf(bytes, origin);
  return tree != nullptr && SameTree(*tree, root);
}

void WriteWhole(const RootSection& root, const FileOrigin& origin, FileChange* change) {
  const std::string text = ForDisk(CanonicalText(root));
  const Proof proof(text, origin, root);
  if (!proof.obstacle().reason.empty()) return change->Refuse(proof.obstacle());
  change->Make(EditBetween(change->bytes(), text), text);
}

// Edits the file until it says what the tree says. What was read of it goes before the proof takes
// as much memory again.
void WriteChanges(const RootSection& root, const FileOrigin& origin,
                  std::unique_ptr<const FileText> file, FileChange* change) {
  Remedies remedies;
  bool line_end = false;
  for (;;) {
    auto [edits, emptied, obstacle] = EditsFor(*file, root, remedies);
    if (!obstacle.reason.empty()) return change->Refuse(obstacle);
    if (edits.empty()) return change->Make({}, change->bytes());
    if (line_end) AddLineEnd(*file, &edits);
    const bool was_cut_off = EndsCutOff(*file);
    file.reset();
    const std::string after = Apply(change->bytes(), edits);
    if (IsProven(after, origin, root)) {
      return change->Make(std::move(edits), after, std::move(emptied));
    }
    const Proof proof(after, origin, root);
    if (proof.cut_off() && !was_cut_off && !line_end) {
      line_end = true;
    } else if (proof.obstacle().reason.empty()) {
      return change->Make(std::move(edits), after, std::move(emptied));
    } else if (!remedies.around_changes) {
      remedies.around_changes = true;
    } else {
      std::vector<const RealSection*> found = proof.Displaced();
      if (!remedies.displaced.empty() || found.empty()) return change->Refuse(proof.obstacle());
      remedies.displaced = std::move(found);
    }
    file = std::make_unique<const FileText>(change->bytes(), origin);
  }
}

std::string ConflictOf(const Platform::FileStamp& known, const Platform::FileStamp& now) {
  if (known == now) return {};
  if (!known.exists) return "a file is there that the configuration wasn't read from";
  if (!now.exists) return "the file has been removed since it was read";
  return "the file has changed since it was read";
}

SaveResult Save(RootSection* root, Conflict conflict, bool preview) {
  const FileOrigin origin = root->File();
  FileChange change(origin.path, preview);
  if (root->read_only) change.Refuse("the configuration is read-only");
  if (change.failed()) return std::move(change).Result();

  const bool renamed = root->name() != root->origin.name;
  const std::string fault =
      ConflictOf(renamed ? Platform::FileStamp() : root->stamp, change.stamp());
  if (!fault.empty()) change.NoteChanged();
  if (!fault.empty() && conflict == Conflict::Refuse) {
    change.Refuse(fault);
  } else if (!change.stamp().exists || (!fault.empty() && conflict == Conflict::Replace)) {
    WriteWhole(*root, origin, &change);
  } else {
    auto file = std::make_unique<const FileText>(change.bytes(), origin);
    if (file->root() != nullptr) {
      WriteChanges(*root, origin, std::move(file), &change);
    } else if (conflict == Conflict::Replace) {
      WriteWhole(*root, origin, &change);
    } else {
      change.RefuseFaulty(*file);
    }
  }
  if (!preview && !change.failed() && !renamed) root->stamp = change.stamp();
  return std::move(change).Result();
}

SaveResult Format(const std::string& path, bool preview) {
  FileChange change(path, preview);
  if (!change.failed() && !change.stamp().exists) change.Refuse("no such file");
  if (change.failed()) return std::move(change).Result();
  const FileOrigin origin = FileOrigin::OfPath(path);
  const FileText file(change.bytes(), origin);
  if (file.root() == nullptr) {
    change.RefuseFaulty(file);
    return std::move(change).Result();
  }
  const std::string text = ForDisk(CanonicalText(file));
  const Proof proof(text, origin, *file.root());
  if (!proof.obstacle().reason.empty()) {
    change.Refuse(proof.obstacle());
  } else {
    change.Make(EditBetween(change.bytes(), text), text);
  }
  return std::move(change).Result();
}

// Whether the edits are in order, apart from each other and within a file of that size.
bool FitTogether(const std::vector<Edit>& edits, std::size_t size) {
  std::size_t done = 0;
  for (const Edit& edit : edits) {
    if (edit.offset < done || edit.offset > size || edit.length > size - edit.offset) return false;
    done = edit.offset + edit.length;
  }
  return true;
}

}  // namespace

SaveResult SaveInPlace(Config* config, Conflict conflict) {
  return Save(static_cast<RootSection*>(config), conflict, false);
}

SaveResult PreviewSave(Config* config, Conflict conflict) {
  return Save(static_cast<RootSection*>(config), conflict, true);
}

SaveResult FormatFile(const std::string& file) { return Format(file, false); }

SaveResult PreviewFormat(const std::string& file) { return Format(file, true); }

SaveResult EditFile(const std::string& file, std::size_t size, const std::vector<Edit>& edits) {
  FileChange change(file, false);
  if (change.failed()) return std::move(change).Result();
  if (!change.stamp().exists) {
    change.Refuse("no such file");
  } else if (change.bytes().size() != size) {
    change.NoteChanged();
    change.Refuse("the file has changed since it was read");
  } else if (!FitTogether(edits, size)) {
    change.Refuse("the edits overlap, or lie outside of the file");
  } else {
    change.Make(edits, Apply(change.bytes(), edits));
  }
  return std::move(change).Result();
}

}  // namespace confgrove
