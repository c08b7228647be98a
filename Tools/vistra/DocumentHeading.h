#pragma once

#include "Tools/vistra/DocumentEnd.h"
#include "Tools/vistra/DocumentHead.h"

#include <string>

/// What a person is told about a document as a whole, ready for the terminal: its file, whose it
/// is, when it was recorded, and which part of its session it holds.
std::string HeadingOf(const std::string& path, const DocumentHead& head, const DocumentEnd& end);
