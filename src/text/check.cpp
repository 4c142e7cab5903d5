// Check: all problems of a file and of what it imports.
#include <confgrove/problem.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>

#include "base/settings.h"
#include "base/silence.h"
#include "parser/load.h"
#include "platform/platform.h"
#include "text/crossings.h"
#include "text/findings.h"
#include "text/positions.h"
#include "text/survey.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

// Whether there can be anything to find. Only few sound files give the survey work.
bool IsSuspect(const RecordedFile& file) {
  if (!file.found || !file.record.faults.empty()) return true;
  if (file.text.find('\0') != std::string::npos) return true;
  const Piece* before = nullptr;
  bool commented = false;
  for (const Piece& piece : file.record.pieces) {
    switch (piece.kind) {
      case PieceKind::OpenBlockComment:
      case PieceKind::Slash:
      case PieceKind::CutOff:
      case PieceKind::PassedOver: return true;
      case PieceKind::InlineComment:
        if (commented) return true;  // on one line there is one name as a rule
        commented = true;
        break;
      case PieceKind::Name:
        commented = false;
        if (before != nullptr && before->kind == PieceKind::Value && before->end == piece.begin) {
          return true;
        }
        break;
      default: break;
    }
    before = &piece;
  }
  return false;
}

// Turns findings into problems.
class Writer {
 public:
  Writer(const std::string& main_path, const Load& load) {
    for (const RecordedFile& file : load.recorded) {
      std::string path = files_.empty() ? main_path : file.path;
      if (!files_.empty()) {
        std::replace_if(path.begin(), path.end(), Platform::IsSeparator, Platform::separator);
      }
      files_.push_back({&file, path, nullptr});
    }
  }

  Problem Write(const Finding& found) {
    Problem problem;
    problem.severity = found.is_error ? Severity::Error : Severity::Warning;
    problem.message_line = found.message_line;
    problem.code = SlugOf(found.code);
    problem.message = found.message;
    problem.text = found.text;
    problem.place = PlaceOf(found.file, found.span);
    for (const Remark& remark : found.related) {
      problem.related.push_back({PlaceOf(remark.file, remark.span), remark.text});
    }
    for (const WayOut& way_out : found.ways_out) {
      Fix fix;
      fix.text = way_out.text;
      fix.file = problem.place.file;
      for (const Change& change : way_out.changes) {
        const Place place = PlaceOf(found.file, change.span);
        fix.edits.push_back({place.offset, place.length, change.text});
      }
      fix.safe = way_out.safe ? 1 : 0;
      problem.fixes.push_back(std::move(fix));
    }
    problem.unread = found.is_read ? 0 : 1;
    return problem;
  }

 private:
  struct File {
    const RecordedFile* recorded;
    std::string path;
    std::unique_ptr<Positions> positions;  // made when they are asked for
  };

  Place PlaceOf(std::size_t index, const Span& span) {
    File& file = files_[index];
    Place place;
    place.file = file.path;
    if (!file.recorded->found) return place;
    if (file.positions == nullptr) {
      std::string bytes;
      if (!Platform::ReadBytes(file.recorded->path, &bytes)) bytes.clear();
      file.positions =
          std::make_unique<Positions>(file.recorded->text, file.recorded->record, bytes);
    }
    place.offset = file.positions->OnDisk(span.begin);
    place.length = file.positions->OnDisk(span.end) - place.offset;
    place.line = file.positions->Line(span.begin);
    place.column = file.positions->Column(span.begin);
    return place;
  }

  std::vector<File> files_;
};

// What follows from another finding makes that one an error, if it is one itself and is read.
void SettleCauses(std::vector<Finding>* findings) {
  const auto at = [findings](std::int32_t i) -> Finding& {
    return (*findings)[static_cast<std::size_t>(i)];
  };
  for (Finding& found : *findings) {
    if (found.cause < 0) continue;
    std::int32_t root = found.cause;
    while (at(root).cause >= 0) root = at(root).cause;
    found.cause = root;
    if (found.is_error && (found.is_read || !at(root).is_read)) at(root).is_error = true;
  }
}

std::vector<Finding> FindAll(const Load& load, std::list<Survey>* surveys) {
  std::vector<Finding> findings;
  for (const RecordedFile& file : load.recorded) {
    Survey& survey = surveys->emplace_back(file, surveys->size(), &findings);
    if (file.found) survey.Run();
  }
  if (!load.recorded.front().found) {
    Finding missing;
    missing.code = Code::Unreadable;
    missing.is_error = true;
    findings.push_back(std::move(missing));
  }
  FollowAcross(*surveys, &findings);
  SettleCauses(&findings);
  return findings;
}

// By file and place. What isn't read and follows from something else goes.
std::vector<std::size_t> InOrder(const std::vector<Finding>& findings) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < findings.size(); ++i) {
    if (findings[i].is_read || findings[i].cause < 0) order.push_back(i);
  }
  std::stable_sort(order.begin(), order.end(), [&findings](std::size_t a, std::size_t b) {
    const Finding& one = findings[a];
    const Finding& two = findings[b];
    return one.file != two.file ? one.file < two.file : one.span.begin < two.span.begin;
  });
  return order;
}

}  // namespace

std::vector<Problem> Check(const std::string& file) {
  const Silence silence;
  const FileOrigin origin = FileOrigin::OfPath(file);
  const SettingsOf settings(origin);
  Load load;
  load.records = true;
  load.reads_on = true;
  if (origin.name.empty()) {  // no program can open it
    load.recorded.emplace_back();
  } else {
    LoadFile(&load, origin.name, true, 1);
  }
  if (std::none_of(load.recorded.begin(), load.recorded.end(), IsSuspect)) return {};

  std::list<Survey> surveys;
  std::vector<Finding> findings = FindAll(load, &surveys);
  const std::vector<std::size_t> order = InOrder(findings);
  std::vector<std::int32_t> number_of(findings.size(), NoCause);
  for (std::size_t i = 0; i < order.size(); ++i) {
    number_of[order[i]] = static_cast<std::int32_t>(i);
  }
  std::vector<const Survey*> survey_of;
  for (const Survey& survey : surveys) survey_of.push_back(&survey);

  Writer writer(file, load);
  std::vector<Problem> problems;
  problems.reserve(order.size());
  for (const std::size_t i : order) {
    Finding& found = findings[i];
    if (found.cause < 0) AddWaysOut(*survey_of[found.file], &found);
    if (found.text.empty()) PutInWords(*survey_of[found.file], &found);
    problems.push_back(writer.Write(found));
    if (found.cause >= 0) {
      problems.back().follows = number_of[static_cast<std::size_t>(found.cause)];
    }
    found = Finding();
  }
  return problems;
}

}  // namespace confgrove
