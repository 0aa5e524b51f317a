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
inline constexpr char nameToCloseMissing[] =
    "No name was given. OUTPUT CLOSE NAME=name closes an open output document, OUTPUT CLOSE * the active "
    "one, OUTPUT CLOSE ALL every one.";
inline constexpr char nameTaken[] =
    "An output document named ^1 is open already. Choose another name, or close that document with OUTPUT "
    "CLOSE.";
inline constexpr char nameReserved[] =
    "An output document cannot be named ^1, because ALL and * stand for documents in commands. Choose "
    "another name.";
inline constexpr char documentLocked[] =
    "The output document ^1 is locked and cannot be changed. OUTPUT SAVE with LOCK=NO unlocks it; OUTPUT "
    "OPEN with LOCK=NO opens a file for changing, unless it was saved with LOCK=YES.";

// Files. In an argument a file may be followed by details in parentheses.
inline constexpr char fileMissing[] =
    "No file was given. Name the file of the output document as a quoted text.";
inline constexpr char fileOpenAlready[] =
    "The file ^1 is in use. Work with that output document (OUTPUT DISPLAY lists the open ones), close it "
    "with OUTPUT CLOSE, or name another file.";
inline constexpr char foreignFile[] =
    "The file ^1 is there already and is no output document, so it is not replaced. Name another file.";
/// Stands before the name of the document that has the file in the argument of `fileOpenAlready`:
/// "a.vxv (open as report)", "a.vxv (open as an unnamed document)".
inline constexpr char openAs[] = "open as ";
inline constexpr char unnamedDocument[] = "an unnamed document";
inline constexpr char noSuchFile[] = "There is no file ^1. Check its folder and its name.";
inline constexpr char fileIsFolder[] = "^1 is a folder. Name a file in it.";
inline constexpr char cannotRead[] = "The file ^1 cannot be read. Check its rights.";
inline constexpr char cannotWrite[] =
    "The output document could not be saved to ^1; what was there before is unchanged. Check the folder, its "
    "rights and "
    "the space on the disk.";
inline constexpr char noMemory[] =
    "There is not enough memory for the output document ^1. Close other documents and try again.";
inline constexpr char fileTooLarge[] =
    "The file ^1 asks for more memory than an output document may take, and was not opened. OUTPUT SAVE "
    "writes no such file; use a copy from a source that you trust.";
inline constexpr char notADocument[] =
    "The file ^1 is no output document. OUTPUT OPEN reads files that OUTPUT SAVE has written.";
inline constexpr char damaged[] =
    "The output document ^1 is damaged and was not opened. Use a copy of the file that is whole, such as a "
    "backup.";
inline constexpr char otherCompression[] =
    "The file ^1 is compressed in a way that output documents are not, and was not opened. Pack it again "
    "with the method deflate, or use the file as OUTPUT SAVE has written it.";
inline constexpr char newerFormat[] =
    "The output document ^1 was written by a newer version; this program reads up to format 1. Use the newer "
    "program to "
    "open it.";
/// Stands before the version in the argument of `newerFormat`: "a.vxv (format 2)".
inline constexpr char formatWord[] = "format ";
inline constexpr char unsafeName[] =
    "The file ^1 holds a name that is not allowed in an output document, and was not opened. Use a copy of "
    "the file "
    "from a source that you trust.";
inline constexpr char passwordMissing[] =
    "The output document ^1 is protected. Give its password in quotes, as in PASSWORD='password'.";
inline constexpr char passwordWrong[] =
    "The password does not open the output document ^1. Check its spelling, also capitals.";
inline constexpr char passwordForm[] =
    "The output document was not saved to ^1, because the password given with ENCRYPTEDPW=YES is no "
    "encrypted password. The command \"vexa password\" makes one of 20 characters; without ENCRYPTEDPW=YES "
    "the password itself can be given.";
inline constexpr char beyondLimits[] =
    "The output document was not saved to ^1, because it holds more than a file may hold. Save it in smaller "
    "parts.";
inline constexpr char tableTooLarge[] =
    "The output document was not saved to ^1, because a table is too large to be stored without its data "
    "model. Save "
    "with STOREMODEL=YES.";

/// Stands for a document without a name, in arguments.
inline constexpr char unnamed[] = "(unnamed)";
inline constexpr char unknownRequest[] =
    "The output controller does not know the request ^1. Use a command module of the same version as the "
    "program.";

/// A reply to a modification, whose counts (selected, modified, deleted) stand in parentheses.
inline constexpr char modificationMissing[] =
    "Output not modified (0,0,0). The embedded output controller cannot modify documents yet.";
inline constexpr char nothingExported[] = "Nothing was exported: this front end cannot export documents yet.";
inline constexpr char nothingModified[] = "Nothing was modified: this front end cannot modify documents yet.";

/// Outline labels.
inline constexpr char errorLabel[] = "Error";
inline constexpr char warningLabel[] = "Warning";
inline constexpr char messageLabel[] = "Message";
inline constexpr char notesLabel[] = "Notes";
inline constexpr char textLabel[] = "Text";

}  // namespace vexa::frontend::messages
