// Every text that the embedded output controller answers a refused request with. ^1 stands for the argument.
#pragma once

namespace vexa::frontend::messages {

inline constexpr char noDocumentOpen[] =
    "No output document is open. OUTPUT NEW makes one, OUTPUT OPEN opens a saved one.";
inline constexpr char noSuchDocument[] =
    "No open output document is named ^1. OUTPUT DISPLAY lists the open ones.";
/// Follows the name in the argument of `noSuchDocument` when few documents are open: "b (open: a, c)".
inline constexpr char openDocuments[] = "open: ";
inline constexpr char nameMissing[] =
    "No name was given. OUTPUT ACTIVATE NAME=name makes an open output document the active one; OUTPUT "
    "DISPLAY lists "
    "them.";
inline constexpr char nameTaken[] =
    "An output document named ^1 is open already. Choose another name, or close that document with OUTPUT "
    "CLOSE.";
inline constexpr char nameReserved[] =
    "An output document cannot be named ^1, because the word stands for other documents in commands. Choose "
    "another "
    "name.";
inline constexpr char documentLocked[] =
    "The output document ^1 is locked and cannot be changed. OUTPUT SAVE with LOCK=NO unlocks it, OUTPUT "
    "OPEN with "
    "LOCK=NO opens a file for changing.";
/// Stands for a document without a name, in arguments.
inline constexpr char unnamed[] = "(unnamed)";
inline constexpr char unknownRequest[] =
    "The output controller does not know the request ^1. Use a command module of the same version as the "
    "program.";

/// A reply to a modification, whose counts (selected, modified, deleted) stand in parentheses.
inline constexpr char modificationMissing[] =
    "Output not modified (0,0,0). The embedded output controller cannot modify documents yet.";

/// Outline labels.
inline constexpr char errorLabel[] = "Error";
inline constexpr char warningLabel[] = "Warning";
inline constexpr char messageLabel[] = "Message";
inline constexpr char notesLabel[] = "Notes";
inline constexpr char textLabel[] = "Text";

}  // namespace vexa::frontend::messages
