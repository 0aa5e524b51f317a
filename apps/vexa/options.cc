#include "apps/vexa/options.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <sstream>
#include <string_view>

#include "apps/vexa/command_line.h"
#include "apps/vexa/diagnostics.h"
#include "apps/vexa/exit_status.h"
#include "apps/vexa/language_choice.h"
#include "apps/vexa/usage_errors.h"
#include "backend/platform/version.h"
#include "frontend/import/import_file.h"

namespace vexa::program {

namespace {

constexpr const char* kPurpose =
    "Runs the syntax of output documents: makes, opens, saves, lists and closes them.";

constexpr const char* kAdapters =
    "What answers requests: embedded (real documents, the default), none, no-controller, or script:FILE "
    "(answers out of FILE)";

constexpr const char* kExamples = R"(Examples:
  vexa                                  commands typed at a prompt
  vexa run report.vxs                   runs a syntax file
  vexa run --trace trace.jsonl a.vxs    and writes down every request, message and table
  vexa check report.vxs                 finds errors in the syntax without running anything
  vexa import report.vxv income.csv     puts tables, pictures and texts into a document
  vexa show report.vxv                  shows what is in a document
  vexa export report.vxv report.html    writes it as a page
  vexa help OUTPUT SAVE                 shows what a command takes)";

constexpr const char* kRunExamples =
    R"(Exit status: 0 no command reported an error, 1 a command did, 2 wrong usage or a file that cannot be read.

Examples:
  vexa run report.vxs
  echo "OUTPUT DISPLAY." | vexa run -
  vexa run --adapter script:answers.jsonl --trace - case.vxs
  vexa run --now 2026-03-05T10:07:09 --charset windows-1252 old.vxs)";

constexpr const char* kCheckExamples =
    R"(Files of INSERT are checked as well; CD and FILE HANDLE take effect for that.

Examples:
  vexa check report.vxs
  vexa check --charset Shift_JIS one.vxs two.vxs)";

constexpr const char* kImportExamples =
    R"(The document is made where it is not there, else extended. All files go in, or none. A file's form is that of its
extension: .json .csv .tsv .html .svg .png .md .txt. What an option says counts where the file says nothing.

Exit status: 0 all went in, 1 a file or the document was refused, 2 wrong usage or a file that cannot be read or written.

Examples:
  vexa import report.vxv results.json income.svg
  vexa import --title "Income by region" --separator ";" --decimal , report.vxv income.csv
  make-results | vexa import --as json report.vxv -)";

constexpr const char* kShowExamples = R"(Examples:
  vexa show report.vxv                  prints the outline: numbers, types, labels, sizes, what is hidden
  vexa show --item 3 report.vxv         prints the third item
  vexa show --json report.vxv           prints all of it in the form that vexa import takes)";

constexpr const char* kExportExamples =
    R"(The extension says the format: .html .mht .txt .pdf .docx .rtf .pptx .xlsx .xlsm .xls, or of pictures .png .jpg .bmp
.tif .emf .eps. KEYWORD=VALUE is what OUTPUT EXPORT takes: for the format, for CONTENTS, or for the command itself.

Exit status: 0 the file was written, 1 it was not, 2 wrong usage or a document that cannot be read.

Examples:
  vexa export report.vxv report.html
  vexa export report.vxv report.html INTERACTLAYERS=YES LAYERS=ALL
  vexa export --as report report.vxv march.html "TITLE=March 2026"
  vexa export report.vxv report.txt ENCODING=UTF8 COLUMNWIDTH=12)";

constexpr const char* kHelpExamples = R"(Examples:
  vexa help                             lists the commands
  vexa help OUTPUT SAVE                 shows the syntax of one
  vexa help OUTPUT SAVE PASSPROTECT     shows one of its subcommands or parameters)";

constexpr const char* kPasswordExamples =
    R"(The password is asked for twice and not shown; when standard input is not a terminal, it is the first line of that. It is
never taken from the command line, where others could see it.

Examples:
  vexa password
  vexa password < secret.txt

The text that it prints goes into syntax like this:
  OUTPUT SAVE OUTFILE='report.vxv' /PASSPROTECT PASSWORD='text' ENCRYPTEDPW=YES.)";

constexpr const char* kCompletionExamples = R"(Examples:
  source <(vexa completion bash)        in ~/.bashrc
  vexa completion fish > ~/.config/fish/completions/vexa.fish)";

constexpr const char* kManualExamples = R"(Example:
  vexa manual | man -l -)";

/// Takes "none", "script:FILE" and so on; the complaint is CLI11's.
void readAdapter(const std::string& text, SessionChoices& choices) {
    constexpr std::string_view kScript = "script:";
    if (text == "embedded") {
        choices.adapter = AdapterKind::embedded;
    } else if (text == "none") {
        choices.adapter = AdapterKind::none;
    } else if (text == "no-controller") {
        choices.adapter = AdapterKind::noController;
    } else if (std::string_view(text).starts_with(kScript) && text.size() > kScript.size()) {
        choices.adapter = AdapterKind::script;
        choices.answersFile = text.substr(kScript.size());
    } else {
        throw CLI::ValidationError("--adapter",
                                   "takes embedded, none, no-controller or script:FILE, not '" + text + "'");
    }
}

void readNow(const std::string& text, SessionChoices& choices) {
    choices.now = parseLocalTime(text);
    if (!choices.now) {
        throw CLI::ValidationError("--now",
                                   "takes a local time such as 2026-03-05T10:07:09, not '" + text + "'");
    }
}

void readLocalMode(const std::string& text, SessionChoices& choices) {
    if (text != "yes" && text != "no") {
        throw CLI::ValidationError("--local-mode", "takes yes or no, not '" + text + "'");
    }
    choices.localMode = text == "yes";
}

void readRecord(const std::string& text, SessionChoices& choices) {
    if (text != "output" && text != "all") {
        throw CLI::ValidationError("--record", "takes output or all, not '" + text + "'");
    }
    choices.recordAll = text == "all";
}

void addDiagnostics(CLI::App& app, SessionChoices& choices) {
    app.add_option_function<std::string>(
           "--diagnostics",
           [&choices](const std::string& text) {
               if (text != "text" && text != "json") {
                   throw CLI::ValidationError("--diagnostics", "takes text or json, not '" + text + "'");
               }
               choices.diagnosticsAsJson = text == "json";
           },
           "Write messages as sentences, or each as a JSON line with code, file, line, column, text and hint "
           "(text)")
        ->option_text("text|json");
}

void addQuiet(CLI::App& app, SessionChoices& choices) {
    app.add_flag("--quiet", choices.quiet, "Print no tables, texts and notes, only warnings and errors");
}

/// Options that reading syntax needs, whatever is done with it.
void addReadingOptions(CLI::App& app, SessionChoices& choices) {
    app.add_option("--charset", choices.charset,
                   "The character set of syntax files and of the back end (UTF-8)")
        ->option_text("NAME");
    app.add_option_function<std::string>(
           "--language", [&choices](const std::string& text) { choices.language = languageOfLocale(text); },

           "The language of messages, titles and month names (that of the locale, or en)")
        ->option_text("CODE");
    app.add_option(
           "--installation", choices.installationFolder,
           "Where string tables (lang) and table looks (Looks) stand (the folder above the program's)")
        ->option_text("FOLDER");
    app.add_option("--module", choices.moduleFile, "The library of the commands (the one beside the program)")
        ->option_text("FILE");
    addQuiet(app, choices);
    addDiagnostics(app, choices);
}

/// Options of a session that runs commands.
void addSessionOptions(CLI::App& app, SessionChoices& choices) {
    const auto addText = [&app, &choices](const char* name, auto read, const char* help) {
        return app.add_option_function<std::string>(
            name, [read, &choices](const std::string& text) { read(text, choices); }, help);
    };
    addText("--adapter", readAdapter, kAdapters)->option_text("KIND");
    addText("--local-mode", readLocalMode,
            "Whether front end and back end see the same files: yes or no (no)")
        ->option_text("yes|no");
    app.add_option_function<std::string>(
           "--trace", [&choices](const std::string& file) { choices.traceFile = file; },
           "Write what happens to FILE as JSON lines; - is standard output")
        ->option_text("FILE");
    app.add_flag("--trace-passwords", choices.tracesPasswords,
                 "Show passwords in a trace that is no file of the user's alone, where *** stands for them");
    addText("--now", readNow, "The time that commands see, such as 2026-03-05T10:07:09")->option_text("TIME");
    addText("--record", readRecord,
            "What documents take: output, or all, with what the document commands say of themselves (output)")
        ->option_text("output|all");
    addReadingOptions(app, choices);
}

/// Options that the texts of the program need.
void addTextOptions(CLI::App& app, SessionChoices& choices) {
    app.add_option_function<std::string>(
           "--language", [&choices](const std::string& text) { choices.language = languageOfLocale(text); },
           "The language of messages and titles (that of the locale, or en)")
        ->option_text("CODE");
    app.add_option(
           "--installation", choices.installationFolder,
           "Where string tables (lang) and table looks (Looks) stand (the folder above the program's)")
        ->option_text("FOLDER");
    addDiagnostics(app, choices);
}

void addPasswordFile(CLI::App& app, DocumentChoices& choices) {
    app.add_option("--password-file", choices.passwordFile,
                   "The first line of FILE is the document's password (it is asked for on a terminal)")
        ->option_text("FILE");
}

/// One ASCII character; "tab" is a tabulator.
char readSeparator(const std::string& option, const std::string& text) {
    if (text == "tab" || text == "\\t" || text == "\t") {
        return '\t';
    }
    if (text.size() != 1 || static_cast<unsigned char>(text[0]) > 126 || text == "\"" || text[0] < ' ') {
        throw CLI::ValidationError(option, "takes one character, not '" + text + "'");
    }
    return text[0];
}

void readForm(const std::string& text, frontend::ImportOptions& options) {
    options.form = frontend::formOfWord(text);
    if (!options.form) {
        throw CLI::ValidationError("--as",
                                   "takes json, csv, tsv, html, svg, png, md or txt, not '" + text + "'");
    }
}

/// Options of tables in text.
void addTableOptions(CLI::App& app, frontend::ImportOptions& options) {
    constexpr std::size_t kMostLabels = 100;
    const CLI::Range labels(std::size_t{0}, kMostLabels);
    app.add_option("--header-rows", options.headerRows,
                   "Rows of column labels; several become nested groups (1)")
        ->check(labels)
        ->option_text("N");
    app.add_option("--label-columns", options.labelColumns,
                   "Columns of row labels; several become nested groups (1)")
        ->check(labels)
        ->option_text("N");
    app.add_option_function<std::string>(
           "--separator",
           [&options](const std::string& text) { options.separator = readSeparator("--separator", text); },
           "What separates values: one character, or tab (a comma in .csv)")
        ->option_text("CHARACTER");
    app.add_option_function<std::string>(
           "--decimal",
           [&options](const std::string& text) { options.decimal = readSeparator("--decimal", text); },
           "The decimal mark of numbers (a point)")
        ->option_text("CHARACTER");
    app.add_option("--encoding", options.encoding, "The encoding of text files (UTF-8)")->option_text("NAME");
}

void describeImport(CLI::App& app, Options& options) {
    frontend::ImportOptions& import = options.document.import;
    app.add_option("DOCUMENT", options.document.document, "The document file, made or extended")->required();
    app.add_option("FILE", options.files, "What goes to its end, in this order; - is standard input")
        ->required();
    app.add_option_function<std::string>(
           "--as", [&import](const std::string& text) { readForm(text, import); },
           "The form of the files: json, csv, tsv, html, svg, png, md or txt (that of their extension)")
        ->option_text("json|csv|tsv|html|svg|png|md|txt");
    app.add_option("--command", import.command, "The command of items on the top level")->option_text("TEXT");
    app.add_option("--subtype", import.subtype, "The subtype of tables, pictures and texts")
        ->option_text("TEXT");
    app.add_option("--label", import.label, "The label of items on the top level in the outline")
        ->option_text("TEXT");
    app.add_option("--title", import.title, "The title of tables")->option_text("TEXT");
    app.add_option("--alternative-text", import.alternativeText,
                   "What a picture shows, for those who cannot see it")
        ->option_text("TEXT");
    addTableOptions(app, import);
    addPasswordFile(app, options.document);
    addTextOptions(app, options.session);
    addQuiet(app, options.session);
}

void describeShow(CLI::App& app, Options& options) {
    constexpr std::size_t kMostItems = 1'000'000'000;
    app.add_option("DOCUMENT", options.document.document, "The document file")->required();
    CLI::Option* const item =
        app.add_option("--item", options.document.item, "Show the item of this number in the outline")
            ->check(CLI::Range(std::size_t{1}, kMostItems))
            ->option_text("N");
    app.add_flag("--json", options.document.asJson, "Print the document in the form that vexa import takes")
        ->excludes(item);
    addPasswordFile(app, options.document);
    addTextOptions(app, options.session);
}

void describeExport(CLI::App& app, Options& options) {
    app.add_option("DOCUMENT", options.document.document, "The document file")->required();
    app.add_option("FILE", options.document.exportFile, "The file to be made; a symbolic link is followed")
        ->required();
    app.add_option("KEYWORD=VALUE", options.document.keywords,
                   "What OUTPUT EXPORT takes, as NOTESCAPTIONS=NO");
    app.add_option("--as", options.document.exportAs,
                   "The format, as report or text (that of the file's extension)")
        ->option_text("FORMAT");
    addPasswordFile(app, options.document);
    app.add_flag("--dry-run", options.session.dryRun, "Write no file, but say what would be written");
    addReadingOptions(app, options.session);
}

/// One command of the program, which `chosen` becomes when it is given.
CLI::App* addAction(CLI::App& app, Options& options, Action action, const char* name, const char* help,
                    const char* examples) {
    CLI::App* const command = app.add_subcommand(name, help);
    command->footer(examples);
    command->callback([&options, action] { options.action = action; });
    return command;
}

void describeRunning(CLI::App& app, Options& options) {
    CLI::App* const run = addAction(app, options, Action::run, "run", "Run syntax files", kRunExamples);
    run->add_option("FILE", options.files, "Syntax files, in this order; - is standard input")->required();
    run->add_flag(
        "--dry-run", options.session.dryRun,
        "Modify no document and write no file, but show what would be (with the embedded front end)");
    run->add_flag("--stop-on-error", options.session.stopOnError,
                  "Run nothing after a command that reported an error");
    addSessionOptions(*run, options.session);

    CLI::App* const check = addAction(app, options, Action::check, "check",
                                      "Find errors in syntax files; nothing is run or sent", kCheckExamples);
    check->add_option("FILE", options.files, "Syntax files; - is standard input")->required();
    addReadingOptions(*check, options.session);
}

void describeHelp(CLI::App& help, Options& options) {
    help.add_option("COMMAND", options.commandWords, "The name of a command, and what of it is to be shown");
    help.add_option("--module", options.session.moduleFile, "The library of the commands")
        ->option_text("FILE");
}

void describeCompletion(CLI::App& app, Options& options) {
    addAction(app, options, Action::completion, "completion",
              "Print a script that completes the words of this program in a shell", kCompletionExamples)
        ->add_option("SHELL", options.shell, "bash, zsh or fish")
        ->required()
        ->check(CLI::Validator(
            [](const std::string& word) {
                const bool isKnown = word == "bash" || word == "zsh" || word == "fish";
                return isKnown ? std::string() : "takes bash, zsh or fish, not '" + word + "'";
            },
            ""));
}

void describe(CLI::App& app, Options& options) {
    app.name("vexa");
    app.require_subcommand(0, 1);
    app.allow_windows_style_options(false);  // a path may begin with a slash
    app.footer(kExamples);
    app.set_version_flag("--version", std::string("vexa ").append(productVersion()), "Print the version");
    addSessionOptions(app, options.session);
    app.add_option("FILE", options.files, "Syntax files, as for run")
        ->check(CLI::Validator([&app](const std::string& word) { return objectionToFile(app, word); }, ""))
        ->option_text(" ");

    describeRunning(app, options);
    describeImport(*addAction(app, options, Action::import, "import",
                              "Put tables, pictures and texts into a document", kImportExamples),
                   options);
    describeShow(*addAction(app, options, Action::show, "show", "Show what is in a document", kShowExamples),
                 options);

    describeExport(*addAction(app, options, Action::exportFile, "export",
                              "Write a document as a page, a report, a text and more", kExportExamples),
                   options);

    describeHelp(*addAction(app, options, Action::help, "help", "Show what the commands of the language take",
                            kHelpExamples),
                 options);

    addAction(app, options, Action::password, "password", "Print the encrypted form of a password",
              kPasswordExamples);

    describeCompletion(app, options);
    addAction(app, options, Action::manual, "manual", "Print the manual page, for man", kManualExamples);
}

DescribedCommand describedCommand(const CLI::App& app, bool isProgram) {
    DescribedCommand command;
    command.name = isProgram ? "" : app.get_name();
    command.help = app.get_description();
    command.more = app.get_footer();
    for (const CLI::Option* const option : app.get_options()) {
        if (option->get_positional()) {
            const bool repeats = option->get_items_expected_max() > 1;
            command.positionals.push_back({option->get_name(true) + (repeats ? "..." : ""), "",
                                           option->get_description(), option->get_required()});
            continue;
        }
        const bool hasValue = option->get_items_expected_max() > 0;
        const std::string value = hasValue ? option->get_option_text() : "";
        command.options.push_back(
            {"--" + option->get_lnames().front(), value, option->get_description(), false});
    }
    return command;
}

/// Whether the command line asks for messages as JSON, also when it cannot be read as a whole.
bool asksForJson(int argc, const char* const* argv) {
    const std::vector<std::string_view> words(argv, argv + argc);
    for (std::size_t i = 1; i < words.size(); ++i) {
        const bool isApart = words[i] == "--diagnostics" && i + 1 < words.size() && words[i + 1] == "json";
        if (isApart || words[i] == "--diagnostics=json") return true;
    }
    return false;
}

/// Shows what `error` asks for, or complains of it, and gives the exit status.
int complainOf(const CLI::App& app, const CLI::ParseError& error) {
    std::ostringstream passedOver;
    if (app.exit(error, std::cout, passedOver) == 0) return exit_status::kSuccess;
    complainOfUsage(usageComplaint(app, error));
    return exit_status::kUsage;
}

}  // namespace

std::vector<DescribedCommand> describedCommandLine() {
    Options options;
    CLI::App app(kPurpose);
    describe(app, options);
    std::vector<DescribedCommand> commands{describedCommand(app, true)};
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
        commands.push_back(describedCommand(*command, false));
    }
    return commands;
}

std::optional<Options> readOptions(int argc, const char* const* argv, int& exitStatus) {
    Options options;
    setDiagnosticsAsJson(asksForJson(argc, argv));
    CLI::App app(kPurpose);
    describe(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitStatus = complainOf(app, error);
        return std::nullopt;
    }
    if (options.action == Action::prompt && !options.files.empty()) {
        options.action = Action::run;
    }
    if (options.session.dryRun && options.session.adapter != AdapterKind::embedded) {
        complainOfUsage("--dry-run: only the embedded front end tells what it would do");
        exitStatus = exit_status::kUsage;
        return std::nullopt;
    }
    setDiagnosticsAsJson(options.session.diagnosticsAsJson);
    options.session.checkOnly = options.action == Action::check;
    options.session.inputs = options.files;
    if (options.action == Action::check || options.action == Action::help) {
        options.session.adapter = AdapterKind::none;  // nothing is sent
    }
    return options;
}

}  // namespace vexa::program
