#include "cli/script.h"

#include "cli/keyverbs.h"
#include "cli/utf8.h"

namespace vorn::cli {

namespace {

// Cuts the first line off the front of `text`.
std::string_view takeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

bool stop(Script& script, std::string_view name, int line)
{
    script.out.error(std::string(name) + ':' + std::to_string(line) + ": " + script.reason);
    return false;
}

} // namespace

bool runScript(Script& script, std::string_view name, std::string_view text)
{
    // Editors that mark their files as UTF-8 do so with these bytes.
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(ByteOrderMark))
        text.remove_prefix(ByteOrderMark.size());
    // A window is painted before anybody can touch it.
    repaint(script);
    // Closing the program ends the script: nothing is there any more that a statement could be for.
    for (int number = 1; !text.empty() && !script.app.quitRequested; ++number) {
        const std::string_view line = takeLine(text);
        if (line.empty() || line.starts_with('#'))
            continue;
        if (!runStatement(script, fromUtf8(line)))
            return stop(script, name, number);
        script.app.showError();
        repaint(script);
        if (!script.user.dialogAnswers.problem.empty()) {
            script.reason = script.user.dialogAnswers.problem;
            return stop(script, name, number);
        }
    }
    return true;
}

} // namespace vorn::cli
