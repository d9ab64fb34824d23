#include "cli/CliOptions.h"

#include "core/Text.h"

namespace mw {

CliParseResult ParseCliOptions(const std::vector<std::string>& args)
{
    CliParseResult result;
    CliOptions& o = result.Options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--help" || a == "-h") {
            o.Help = true;
        } else if (a == "--version") {
            o.Version = true;
        } else if (a == "-o" || a == "--output") {
            if (!hasValue) {
                result.Error = "option " + a + " needs a file name";
                return result;
            }
            o.Output = args[++i];
        } else if (a == "--answer") {
            const std::string value = hasValue ? Lower(args[++i]) : std::string();
            if (value == "yes")
                o.Answer = PromptAnswer::Yes;
            else if (value == "no")
                o.Answer = PromptAnswer::No;
            else if (value == "cancel")
                o.Answer = PromptAnswer::Cancel;
            else {
                result.Error = "--answer takes yes, no or cancel";
                return result;
            }
        } else if (a.size() > 1 && a[0] == '-') {
            result.Error = "unknown option " + a;
            return result;
        } else if (o.Command.empty()) {
            o.Command = a;
        } else {
            o.Arguments.push_back(a);
        }
    }
    return result;
}

std::string CliUsage()
{
    return "Usage: menuwright-cli COMMAND [ARGUMENTS] [OPTIONS]\n"
           "\n"
           "Commands:\n"
           "  resave IN.xml [-o OUT.xml]        read a project and write it again\n"
           "  check PROJECT.xml                 report dangling references and missing media\n"
           "  normalize PROJECT.xml [-o OUT.xml] renumber all objects 1..N, then save\n"
           "\n"
           "Options:\n"
           "  -o, --output FILE          where to save; without it the project is saved in place\n"
           "  --answer yes|no|cancel     the answer to every question (default: its default button)\n"
           "  --help                     show this text\n"
           "  --version                  show the version\n"
           "\n"
           "Messages go to standard output in order. Exit status: 0 success, 1 check found faults,\n"
           "2 the command line or the input could not be read, 3 the result could not be saved.\n"
           "The program folder is $MENUWRIGHT_HOME when set.\n";
}

} // namespace mw
