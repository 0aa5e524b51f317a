// Every text that the embedded output controller answers a refused request with. ^1 stands for the argument.
//
// Such a text travels as it stands here: whoever reports it looks it up in the string tables. What stands in
// its argument is translated before.
#pragma once

#include "backend/text/system_text.h"

namespace vexa::frontend::messages {

inline constexpr SystemText noDocumentOpen =
    "No output document is open. OUTPUT NEW creates one; OUTPUT OPEN opens a saved one."_text;
inline constexpr SystemText noSuchDocument =
    "No open output document is named ^1. OUTPUT DISPLAY lists the open ones."_text;
/// The argument of `noSuchDocument` when few documents are open: "b (open: a, c)".
inline constexpr SystemText withOpenDocuments = "^1 (open: ^2)"_text;
inline constexpr SystemText nameMissing =
    "No name was given. OUTPUT ACTIVATE NAME=name makes an open output document the active one; OUTPUT "
    "DISPLAY lists "
    "them."_text;
inline constexpr SystemText nameToCloseMissing =
    "No name was given. OUTPUT CLOSE NAME=name closes an open output document, OUTPUT CLOSE * the active one, and OUTPUT CLOSE ALL all of them."_text;
inline constexpr SystemText nameTaken =
    "An output document named ^1 is already open. Choose another name, or close that document with OUTPUT "
    "CLOSE."_text;
inline constexpr SystemText nameReserved =
    "An output document cannot be named ^1, because ALL and * stand for documents in commands. Choose "
    "another name."_text;
inline constexpr SystemText documentLocked =
    "The output document ^1 is locked and cannot be changed. OUTPUT SAVE with LOCK=NO unlocks it."_text;

// Files. In an argument a file may be followed by details in parentheses.
inline constexpr SystemText fileMissing =
    "No file was given. Name the file of the output document as a quoted text."_text;
inline constexpr SystemText fileOpenAlready =
    "The file ^1 is in use. Work with that output document (OUTPUT DISPLAY lists the open ones), close it "
    "with OUTPUT CLOSE, or name another file."_text;
inline constexpr SystemText foreignFile =
    "The file ^1 already exists and is not an output document, so it is not replaced. Name another file."_text;
/// The argument of `fileOpenAlready`: the file, and the name of the document that has it.
inline constexpr SystemText openAs = "^1 (open as ^2)"_text;
inline constexpr SystemText openUnnamed = "^1 (open as an unnamed document)"_text;
/// A file with details.
inline constexpr SystemText withDetails = "^1 (^2)"_text;
inline constexpr SystemText fileIsTrace =
    "The file ^1 is the trace of this run, and is not replaced. Name another file."_text;
inline constexpr SystemText fileLocked =
    "The file ^1 is protected, because its output document was opened with a lock. OUTPUT SAVE with LOCK=NO "
    "replaces "
    "it, and OUTPUT OPEN with LOCK=NO opens it without a lock. Or name another file."_text;
/// The argument: the file, and when it was changed.
inline constexpr SystemText fileChanged =
    "The file ^1 was changed by another program after its output document was opened, and is not replaced. Repeat OUTPUT SAVE to replace it all the same, or name another file."_text;
inline constexpr SystemText notProtected =
    "The file ^1 is not protected, and opens without the password that was given. OUTPUT SAVE with PASSPROTECT protects it."_text;
inline constexpr SystemText standsOpen =
    "The file ^1 is not protected: its output document needed a password, and was saved without PASSPROTECT. Everybody who can read the file can open it."_text;
inline constexpr SystemText otherRights =
    "The file ^1 has not kept its owner, group or permissions, because the system does not allow it. Check who may read it."_text;
inline constexpr SystemText otherNames =
    "The file ^1 was replaced by a new one. Under its other names (hard links) the old one stays as it was."_text;
inline constexpr SystemText noSuchFile = "There is no file ^1. Check its folder and its name."_text;
inline constexpr SystemText fileIsFolder = "^1 is a folder. Name a file in it."_text;
inline constexpr SystemText cannotRead = "The file ^1 cannot be read. Check its permissions."_text;
inline constexpr SystemText cannotWrite =
    "The output document could not be saved to ^1; what was there before is unchanged. Check the folder, its permissions and the free disk space."_text;
/// The argument is the folder.
inline constexpr SystemText noFolder =
    "The output document was not saved, because there is no folder ^1. Make it, or check how it is spelt."_text;
inline constexpr SystemText noMemory =
    "There is not enough memory for the output document ^1. Close other documents and try again."_text;
inline constexpr SystemText fileTooLarge =
    "The file ^1 would take more memory than an output document may, and was not opened. OUTPUT SAVE does not write such files; use a copy from a source that you trust."_text;
inline constexpr SystemText notADocument =
    "The file ^1 is not an output document. OUTPUT OPEN reads files that OUTPUT SAVE has written."_text;
inline constexpr SystemText damaged =
    "The output document ^1 is damaged and was not opened. Use an undamaged copy of the file, such as a backup."_text;
inline constexpr SystemText otherCompression =
    "The file ^1 is compressed in a way that output documents are not, and was not opened. Compress it again with the deflate method, or use the file as OUTPUT SAVE wrote it."_text;
inline constexpr SystemText newerFormat =
    "The output document ^1 was written by a newer version; this program reads up to format 2. Use the newer "
    "program to "
    "open it."_text;
/// The argument of `newerFormat`: the file and the version of its format.
inline constexpr SystemText withFormat = "^1 (format ^2)"_text;
inline constexpr SystemText unsafeName =
    "The file ^1 contains a name that is not allowed in an output document, and was not opened. Use a copy "
    "of "
    "the file "
    "from a source that you trust."_text;
inline constexpr SystemText passwordMissing =
    "The output document ^1 is protected. Give its password in quotes, as in PASSWORD='password'."_text;
inline constexpr SystemText passwordWrong =
    "The password does not open the output document ^1. Check its spelling and its capital letters."_text;
inline constexpr SystemText passwordForm =
    "The output document was not saved to ^1, because the password given with ENCRYPTEDPW=YES is not an encrypted password. The command \"vexa password\" makes one of 20 characters; without ENCRYPTEDPW=YES, give the password itself."_text;
inline constexpr SystemText beyondLimits =
    "The output document was not saved to ^1, because it contains more than a file can hold. Save it in "
    "smaller "
    "parts."_text;
inline constexpr SystemText tableTooLarge =
    "The output document was not saved to ^1, because a table is too large to be stored without its data "
    "model: as shown, it has more than 1,000,000 places or more than 64,000,000 bytes of text. Save with "
    "STOREMODEL=YES."_text;

/// Stands for a document without a name, in arguments.
inline constexpr SystemText unnamed = "(unnamed)"_text;
inline constexpr SystemText unknownRequest =
    "The output controller does not know the request ^1. Use a command module of the same version as the "
    "program."_text;

// Modifications.
/// The argument is a sentence that says why.
inline constexpr SystemText modificationRefused =
    "The modification was refused, and nothing was changed. ^1"_text;
inline constexpr SystemText modifiedDocuments =
    "The modification has changed these output documents: ^1."_text;
inline constexpr SystemText noneModified =
    "The modification has changed none of the open output documents."_text;
/// Group, number, label, a sentence that says why.
inline constexpr SystemText passedOverItem = "Selection group ^1, item ^2 (^3): ^4"_text;
/// Group, number and label of the first item, how many items, a sentence that says why.
inline constexpr SystemText passedOverItems = "Selection group ^1, item ^2 (^3) and more, ^4 in all: ^5"_text;

// Dry runs.
inline constexpr SystemText dryModification =
    "This is a dry run, and the output document is not changed."_text;
inline constexpr SystemText drySave =
    "This is a dry run, and nothing is written: the output document ^1 would be saved to ^2."_text;
inline constexpr SystemText dryExport =
    "This is a dry run, and nothing is written: the output document ^1 would be exported to ^2."_text;
inline constexpr SystemText planTitle = "What selection group ^1 would do to the output document ^2"_text;
inline constexpr SystemText nothingSelected =
    "Selection group ^1 would select nothing in the output document ^2."_text;
inline constexpr SystemText planColumns = "Plan"_text;
inline constexpr SystemText groupColumn = "Group"_text;
inline constexpr SystemText itemColumn = "Item"_text;
inline constexpr SystemText labelColumn = "Label"_text;
inline constexpr SystemText selectedColumn = "Selected"_text;
inline constexpr SystemText changeColumn = "Change"_text;
inline constexpr SystemText reasonColumn = "Reason"_text;
inline constexpr SystemText yesWord = "yes"_text;
inline constexpr SystemText noWord = "no"_text;
inline constexpr SystemText isSoAlready = "It is so already."_text;

/// Outline labels, stored in documents in the language of the session.
inline constexpr SystemText errorLabel = "Error"_text;
inline constexpr SystemText warningLabel = "Warning"_text;
inline constexpr SystemText logLabel = "Log"_text;
inline constexpr SystemText notesLabel = "Notes"_text;

}  // namespace vexa::frontend::messages
