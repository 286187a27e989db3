// vorn-cli: the spreadsheet without a window.
#include "cli/commands.h"
#include "platform/headless/clipboard.h"
#include "platform/headless/textmeasure.h"
#include "platform/system/machine.h"
#include "shell/settings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace vorn::cli {
namespace {

// What a call asks for.
struct Call {
    MachineOptions machine;
    std::vector<std::string> expressions;
    ShowRequest show;
    ConvertRequest convert;
    std::string form = "text";
    std::string scriptFile = "-";
    std::string functionName;
    std::vector<std::string> ignored;
};

CLI::App* addCommand(CLI::App& program, const std::string& name, const std::string& does)
{
    CLI::App* command = program.add_subcommand(name, does);
    command->set_help_flag("-h,--help", "Print this help and exit");
    return command;
}

// An option that is given says something.
std::string refuseEmpty(const std::string& value)
{
    return value.empty() ? "a value is missing" : std::string();
}

// The options of all subcommands; they may also stand before the subcommand.
void addSharedOptions(CLI::App& command, MachineOptions& options)
{
    command.add_option("--locale", options.locale, "Locale, such as en_US or de_DE")
        ->type_name("NAME");
    command.add_option("--now", options.now, "The time that the clock shows")
        ->type_name("YYYY-MM-DDThh:mm:ss")
        ->check(refuseEmpty);
    command.add_option("--code-page", options.codePage, "The system's code page, such as 1252")
        ->type_name("N")
        ->check(CLI::Range(1, 65535));
    command
        .add_option("--settings", options.settingsFile,
                    "File of the settings; one that cannot be read or written is as if it were new")
        ->type_name("FILE");
    command.set_version_flag("--version", "vorn-cli " VORN_VERSION);
}

void addCommands(CLI::App& program, Call& call)
{
    CLI::App* eval = addCommand(program, "eval", "Print what expressions give");
    eval->add_option("EXPR", call.expressions, "Expressions, with or without '='")->required();

    CLI::App* show = addCommand(program, "show", "Print a sheet of a file");
    show->add_option("FILE", call.show.file, "The file")->required();
    show->add_option("--sheet", call.show.sheet, "Name or number of the sheet")
        ->type_name("NAME|N")
        ->check(refuseEmpty);
    show->add_option("--range", call.show.range, "Cells to print; all that are used if left out")
        ->type_name("REF")
        ->check(refuseEmpty);
    show->add_option("--as", call.form, "What to print of a cell")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "input", "value"}));

    CLI::App* convert = addCommand(program, "convert", "Write a file in another format");
    convert->add_option("IN", call.convert.from, "The file to read")->required();
    convert->add_option("OUT", call.convert.to, "The file to write")->required();

    CLI::App* script = addCommand(program, "script", "Run a script");
    script->add_option("FILE", call.scriptFile, "The script; - or nothing is standard input");

    CLI::App* functions = addCommand(program, "functions", "Describe the functions of formulas");
    functions->add_option("NAME", call.functionName, "One function; all of them if left out");

    addCommand(program, "task", "Does not exist yet")->prefix_command();
    for (CLI::App* command : program.get_subcommands({}))
        addSharedOptions(*command, call.machine);
    addSharedOptions(program, call.machine);
    program.require_subcommand(1);
}

CellForm formNamed(const std::string& name)
{
    if (name == "input")
        return CellForm::Input;
    return name == "value" ? CellForm::Value : CellForm::Text;
}

int runDocumentCommand(const std::string& command, Call& call, Output& out, ScriptUser& user)
{
    Application app;
    loadSettings();
    app.showDocument();
    Script script{app, user, out, {}};
    if (command == "eval")
        return evaluateExpressions(script, call.expressions);
    if (command == "show") {
        call.show.form = formNamed(call.form);
        return showFile(script, call.show);
    }
    if (command == "convert")
        return convertFile(script, call.convert);
    return runScriptFile(script, call.scriptFile);
}

int runCommand(const std::string& command, Call& call, Output& out)
{
    if (command == "task") {
        out.error(command + " does not exist yet");
        return StatusFailed;
    }
    ScriptUser user(out);
    MemoryClipboard clipboard;
    FixedTextMeasure textMeasure;
    SystemMachine machine(user, clipboard, textMeasure);
    std::string reason;
    if (!machine.install(call.machine, reason)) {
        out.error(reason);
        return StatusWrongCall;
    }
    if (command == "functions")
        return printFunctions(out, call.functionName);
    return runDocumentCommand(command, call, out, user);
}

// An option is -h or a word behind two dashes.
bool isOption(const std::string& argument)
{
    return argument == "-h" || (argument.starts_with("--") && argument.size() > 2 &&
                                argument[2] >= 'a' && argument[2] <= 'z');
}

// The words of the call, the last one first, as the parser takes them. An expression of eval may
// look like an option, as -A1 does, or like a list, as [1] does; the equals sign that may stand
// before any says that it is neither.
std::vector<std::string> readArguments(int argc, char** argv)
{
    std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto command = std::find(arguments.begin(), arguments.end(), "eval");
    for (auto each = command; each != arguments.end(); ++each) {
        const bool likeOption = each->starts_with('-') && *each != "--" && !isOption(*each);
        if (each != command && (likeOption || each->starts_with('[')))
            each->insert(0, 1, '=');
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

int start(int argc, char** argv)
{
    CLI::App program("The Vorn spreadsheet without a window", "vorn-cli");
    program.set_help_flag("-h,--help", "Print this help and exit");
    Call call;
    addCommands(program, call);
    Output out;
    try {
        program.parse(readArguments(argc, argv));
    } catch (const CLI::Success& request) {
        return program.exit(request); // help or version
    } catch (const CLI::ParseError& error) {
        out.error(std::string("vorn-cli: ") + error.what());
        return StatusWrongCall;
    }
    const int status = runCommand(program.get_subcommands().front()->get_name(), call, out);
    out.flush();
    if (!out.ok()) {
        out.error("cannot write the output");
        return StatusFailed;
    }
    return status;
}

} // namespace
} // namespace vorn::cli

int main(int argc, char** argv)
{
    try {
        return vorn::cli::start(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "vorn-cli: %s\n", failure.what());
        return vorn::cli::StatusFailed;
    }
}
