#include "generate/Generated.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace {

// Values that are no words but are looked up: directories, and the ids that the board has.
constexpr char SCRIPT[] = R"(
_nvrhw() {
    local -A words values
    _nvrhw_tables
    local cur=${COMP_WORDS[COMP_CWORD]} path=nvrhw position=0 option= board=() word i wanted
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $word == "=" ]]; then
            continue
        elif [[ -n $option ]]; then
            [[ $option == --board ]] && board=(--board "${word/#\~/$HOME}")
            option=
        elif [[ $word == -* ]]; then
            [[ -n ${values[$path $word]+x} ]] && option=$word
        elif [[ -n ${words[$path $word]+x} ]]; then
            path="$path $word" position=0
        else
            position=$((position + 1))
        fi
    done
    [[ $cur == "=" ]] && cur=
    if [[ -n $option ]]; then
        wanted=${values[$path $option]}
    elif [[ $cur == -* ]]; then
        wanted=${words[$path]}
    else
        wanted=${values[$path $position]-}
        for word in ${words[$path]}; do
            [[ $word == -* ]] || wanted+=" $word"
        done
    fi
    case $wanted in
    DIR)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        return
        ;;
    INPUT | OUTPUT | MONITOR)
        wanted=$("${COMP_WORDS[0]}" "${board[@]}" generate "${wanted,,}s" 2>/dev/null)
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$wanted" -- "$cur")
}
complete -F _nvrhw nvrhw
)";

std::string entry(const std::string& key, const std::string& value) {
    return "    [\"" + key + "\"]=\"" + value + "\"\n";
}

// The values that a check of the option lists, as "{steady,flash}"; empty when it lists none.
std::string choices(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}');
    if (begin == std::string::npos || end == std::string::npos) {
        return "";
    }
    std::string list = type.substr(begin + 1, end - begin - 1);
    std::replace(list.begin(), list.end(), ',', ' ');
    return list;
}

/// The words of the command line as far as `word`.
std::string below(const std::string& path, const std::string& word) { return path + " " + word; }

/// The entries of the script's arrays.
struct Entries {
    std::string words{};  ///< of a command: its options and subcommands
    std::string values{}; ///< what the value of an option or a positional may be
};

void visit(const CLI::App& app, const std::string& path, Entries& entries) {
    std::string words;
    int position = 0;
    for (const CLI::Option* option : app.get_options()) {
        const std::string values = choices(*option);
        if (option->get_positional()) {
            entries.values += entry(below(path, std::to_string(position++)),
                                    values.empty() ? option->get_name(true) : values);
            continue;
        }
        const std::string name = "--" + option->get_lnames().front();
        words += name + " ";
        if (option->get_items_expected_max() > 0) {
            const bool isDirectory = option->get_type_name() == "DIR";
            entries.values += entry(below(path, name), isDirectory ? "DIR" : values);
        }
    }
    for (const CLI::App* sub : app.get_subcommands({})) {
        if (!sub->get_group().empty()) { // not a hidden one
            words += sub->get_name() + " ";
            visit(*sub, below(path, sub->get_name()), entries);
        }
    }
    entries.words += entry(path, words);
}

} // namespace

std::string bashCompletion(const CLI::App& program) {
    Entries entries;
    visit(program, program.get_name(), entries);
    return "# Completion of nvrhw for bash; made by `nvrhw generate bash`.\n"
           "_nvrhw_tables() { # into the arrays of the caller\n    words=(\n" +
           entries.words + "    )\n    values=(\n" + entries.values + "    )\n}\n" + SCRIPT;
}
