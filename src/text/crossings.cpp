// Imports: which file has which, and why one failed.
#include "text/crossings.h"

#include <unordered_map>
#include <utility>

#include "text/links.h"

namespace confgrove {

ImportTree::ImportTree(const std::list<Survey>& surveys) : importers_(surveys.size()) {
  for (const Survey& survey : surveys) {
    surveys_.push_back(&survey);
    by_name_.emplace(survey.file().name, surveys_.size() - 1);
  }
  for (std::size_t i = 0; i < surveys_.size(); ++i) {
    const std::string_view text = surveys_[i]->text();
    for (const Piece& piece : surveys_[i]->file().record.pieces) {
      if (piece.begin >= text.size() || text[piece.begin] != '$') continue;
      const Span span = {piece.begin, piece.end};
      const std::size_t imported = Find(NameIn(span.In(text)));
      // The first directive is the one that was carried out.
      if (imported > i && imported < importers_.size() && importers_[imported].span.end == 0) {
        importers_[imported] = {i, span, ""};
      }
    }
  }
}

std::string_view ImportTree::NameIn(std::string_view directive) {
  const std::size_t begin = directive.find('"');
  const std::size_t end = directive.rfind('"');
  return begin < end ? directive.substr(begin + 1, end - begin - 1) : std::string_view();
}

std::size_t ImportTree::Find(std::string_view name) const {
  const auto found = by_name_.find(name);
  return found != by_name_.end() ? found->second : surveys_.size();
}

bool ImportTree::IsWithin(std::size_t file, std::size_t top) const {
  while (file != top && file != 0) file = importers_[file].file;
  return file == top;
}

namespace {

class Crossings {
 public:
  Crossings(const std::list<Survey>& surveys, std::vector<Finding>* findings)
      : tree_(surveys), findings_(*findings), links_(tree_, findings) {
    for (std::size_t i = 0; i < findings_.size(); ++i) {
      const Finding& found = findings_[i];
      if (found.is_error && found.is_read) first_errors_.try_emplace(found.file, i);
    }
  }

  void Follow() {
    for (std::size_t file = 0; file < tree_.size(); ++file) {
      for (const std::int32_t import : tree_[file].imports()) FollowImport(import);
    }
    for (Finding& found : findings_) {
      if (found.code == Code::ImportAgain) ExplainRepeat(&found);
      if (found.cause < 0) ShowChain(&found);
    }
    for (std::size_t file = 0; file < tree_.size(); ++file) links_.Follow(file);
  }

 private:
  // It failed because of the imported file, or because of any error before it.
  void FollowImport(std::int32_t index) {
    Finding& found = findings_[static_cast<std::size_t>(index)];
    const std::string_view name = ImportTree::NameIn(found.span.In(tree_[found.file].text()));
    const std::size_t imported = tree_.Find(name);
    if (imported == tree_.size() || !tree_[imported].file().found) {
      found.text = "'" + std::string(name) + "' can't be opened";
      if (imported != tree_.size()) found.text += ": there is no " + tree_[imported].file().path;
      return;
    }
    found.text = "this file has errors of its own";
    if (found.cause >= 0) return;
    for (std::size_t file = imported; file < tree_.size(); ++file) {
      const auto error = first_errors_.find(file);
      if (error == first_errors_.end() || !tree_.IsWithin(file, imported)) continue;
      found.cause = static_cast<std::int32_t>(error->second);
      return;
    }
    found.text = "nothing is imported behind an error";
    for (const auto& [file, error] : first_errors_) {
      if (error >= static_cast<std::size_t>(index) && file >= found.file) continue;
      found.cause = static_cast<std::int32_t>(error);
      return;
    }
  }

  void ExplainRepeat(Finding* found) {
    const Survey& survey = tree_[found->file];
    const std::size_t again = tree_.Find(ImportTree::NameIn(found->span.In(survey.text())));
    found->text = "this file is imported already: each file is imported once";
    if (again == tree_.size()) return;
    if (tree_.IsWithin(found->file, again)) {
      found->text = again == found->file ? "this file imports itself" : "this makes a ring";
      for (std::size_t file = found->file; file != again; file = tree_.ImporterOf(file).file) {
        Remark step = tree_.ImporterOf(file);
        step.text = "it is imported here";
        found->related.push_back(std::move(step));
      }
    } else if (again != 0) {
      Remark first = tree_.ImporterOf(again);
      first.text = "it is imported here";
      found->related.push_back(std::move(first));
    }
  }

  void ShowChain(Finding* found) {
    if (found->code == Code::ImportAgain) return;
    for (std::size_t file = found->file; file != 0; file = tree_.ImporterOf(file).file) {
      Remark step = tree_.ImporterOf(file);
      step.text = "imported here";
      found->related.push_back(std::move(step));
    }
  }

  ImportTree tree_;
  std::vector<Finding>& findings_;
  Links links_;
  std::map<std::size_t, std::size_t> first_errors_;  // by file
};

}  // namespace

void FollowAcross(const std::list<Survey>& surveys, std::vector<Finding>* findings) {
  Crossings(surveys, findings).Follow();
}

}  // namespace confgrove
