// The notes about string tables that were asked for and not found.
#pragma once

namespace vexa {

/// Adds a note to the log for every string table that was asked for since the last call and could not be
/// read: one for each file name that is missing, which lists the languages that lack it, and one for each
/// file that is there and broken. In the order of the questions.
void publishStringTableNotes();

}  // namespace vexa
