#pragma once

#include <CLI/CLI.hpp>

#include <sstream>
#include <string>

namespace nrwave
{

/// Help whose lines fit a terminal of 80 columns. That of all commands has a heading for each, as the manual's page is
/// made from it.
class help_t : public CLI::Formatter
{
public:
    std::string make_option_desc(const CLI::Option* option) const override
    {
        return _wrapped(CLI::Formatter::make_option_desc(option));
    }

    std::string make_subcommand(const CLI::App* command) const override
    {
        std::ostringstream line;
        CLI::detail::format_help(line, command->get_name(), _wrapped(command->get_description()), column_width_);
        return line.str();
    }

    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override
    {
        if (mode != CLI::AppFormatMode::All)
            return CLI::Formatter::make_subcommands(app, mode);
        std::ostringstream text;
        for (const CLI::App* command :
             app->get_subcommands([](const CLI::App* each) { return !each->get_group().empty(); }))
            text << "\nnrwave " << command->get_name() << ":\n  " << command->get_description() << '\n'
                 << _without_heading(make_positionals(command))
                 << _without_heading(make_groups(command, CLI::AppFormatMode::Sub)) << _as_typed(make_footer(command));
        return text.str();
    }

private:
    /// Options without the line above them, "Options:", which the manual's page has once.
    static std::string _without_heading(const std::string& text)
    {
        const std::size_t end = text.find(":\n");
        return end == std::string::npos ? text : '\n' + text.substr(end + 2);
    }

    /// Examples as lines behind a prompt, instead of a section of their own.
    static std::string _as_typed(const std::string& footer)
    {
        std::istringstream lines(footer);
        std::string text;
        for (std::string line; std::getline(lines, line);)
            if (line != "Examples:")
                text += (line.starts_with("  nrwave ") ? "  $ " + line.substr(2) : line) + '\n';
        return text;
    }

    /// With newlines between words, behind which the formatter goes back to the column.
    std::string _wrapped(const std::string& text) const
    {
        constexpr std::size_t k_columns = 80;
        std::istringstream words(text);
        std::string lines;
        std::size_t column = column_width_;
        for (std::string word; words >> word; column += word.size()) {
            const bool is_first = lines.empty();
            const bool fits = column + 1 + word.size() <= k_columns;
            if (!is_first)
                lines += fits ? ' ' : '\n';
            column = fits ? column + (is_first ? 0 : 1) : column_width_;
            lines += word;
        }
        return lines;
    }
};

} // namespace nrwave
