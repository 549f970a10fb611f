// How the library of arguments prints help: the texts of a command around its options, all of them
// within a hundred columns.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace qel {

class CHelpFormatter final : public CLI::Formatter {
public:
    explicit CHelpFormatter(std::string usage); // what follows the command's name

    [[nodiscard]] std::string make_help(const CLI::App* pApp, std::string name,
                                        CLI::AppFormatMode mode) const override;
    [[nodiscard]] std::string make_group(std::string heading, bool bPositional,
                                         std::vector<const CLI::Option*> options) const override;
    [[nodiscard]] std::string make_option(const CLI::Option* pOption,
                                          bool bPositional) const override;
    [[nodiscard]] std::string make_subcommand(const CLI::App* pCommand) const override;

private:
    std::string m_usage;
};

} // namespace qel
