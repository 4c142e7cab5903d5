// What follows from what across the files of a load: imports that failed, links without a target.
#ifndef CONFGROVE_TEXT_CROSSINGS_H
#define CONFGROVE_TEXT_CROSSINGS_H

#include <list>
#include <vector>

#include "text/findings.h"
#include "text/survey.h"

namespace confgrove {

// Gives causes, texts, related places and fixes to what the surveys have left open.
void FollowAcross(const std::list<Survey>& surveys, std::vector<Finding>* findings);

}  // namespace confgrove

#endif
