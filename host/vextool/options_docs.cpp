#include "host/vextool/options.h"

#include <sstream>

namespace {

std::vector<const CLI::App*> subcommandsOf(const CLI::App& app)
{
    return app.get_subcommands([](const CLI::App*) { return true; });
}

// A hyphen that is typed must not become a dash, nor a point or quote at the start of a line a
// request.
std::string roff(const std::string& text)
{
    std::string out;
    for (const char character : text) {
        const bool starts = out.empty() || out.back() == '\n';
        if (starts && (character == '.' || character == '\'')) {
            out += "\\&";
        }
        if (character == '-') {
            out += '\\';
        }
        out += character == '\\' ? "\\e" : std::string(1, character);
    }
    return out;
}

/// What stands behind an option's name: its values, nothing for a flag.
std::string valuesOf(const CLI::Option& option)
{
    const bool takesValues = !option.get_positional() && option.get_items_expected_max() > 0;
    return takesValues ? " \\fI" + roff(option.get_type_name()) + "\\fR" : "";
}

void describeOptions(std::ostringstream& page, const CLI::App& app)
{
    for (const CLI::Option* option : app.get_options()) {
        page << ".TP\n\\fB" << roff(option->get_name(false, true)) << "\\fR" << valuesOf(*option)
             << '\n'
             << roff(option->get_description()) << '\n';
    }
}

std::string wordsOf(const CLI::App& app)
{
    std::string words;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            words += "--" + name + ' ';
        }
        for (const std::string& name : option->get_snames()) {
            words += '-' + name + ' ';
        }
    }
    return words;
}

} // namespace

std::string manualPage(const CLI::App& app)
{
    std::ostringstream page;
    page << ".TH VEXTOOL 1 \"\" \"vextool " VEXTOOL_VERSION "\" \"User Commands\"\n"
         << ".SH NAME\nvextool \\- " << roff(app.get_description()) << '\n'
         << ".SH SYNOPSIS\n.B vextool\n[\\-q] \\fICOMMAND\\fR [\\fIOPTION\\fR]...\n"
         << ".SH OPTIONS\n";
    describeOptions(page, app);
    page << ".SH COMMANDS\n";
    for (const CLI::App* sub : subcommandsOf(app)) {
        page << ".SS " << sub->get_name() << '\n' << roff(sub->get_description()) << ".\n";
        describeOptions(page, *sub);
        page << ".PP\n.nf\n" << roff(sub->get_footer()) << "\n.fi\n";
    }
    page << ".SH EXIT STATUS AND EXAMPLES\n.nf\n" << roff(app.get_footer()) << "\n.fi\n";
    return page.str();
}

std::string bashCompletion(const CLI::App& app)
{
    const std::string common = wordsOf(app);
    std::string names;
    std::ostringstream cases;
    for (const CLI::App* sub : subcommandsOf(app)) {
        names += sub->get_name() + ' ';
        cases << "        " << sub->get_name() << ") words=\"" << wordsOf(*sub) << common
              << "\" ;;\n";
    }
    std::ostringstream script;
    // Names of files go in line by line, so that a blank in one does not make two of it.
    script << "_vextool() {\n"
           << "    local words=\"\" command=\"\" word current=\"${COMP_WORDS[COMP_CWORD]}\"\n"
           << "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           << "        case \"$word\" in -*) ;; *) command=$word; break ;; esac\n"
           << "    done\n"
           << "    case \"$command\" in\n"
           << "        \"\") words=\"" << names << common << "\" ;;\n"
           << cases.str() << "    esac\n"
           << "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           << "    if [ -n \"$command\" ] && [ \"${current#-}\" = \"$current\" ]; then\n"
           << "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           << "    fi\n"
           << "}\ncomplete -o filenames -F _vextool vextool\n";
    return script.str();
}
