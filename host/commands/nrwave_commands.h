#pragma once

#include "host/commands/nrwave_command.h"

#include <memory>

namespace nrwave
{

// Each stands in a file of its own, nrwave_NAME.cpp; main lists them for the help in its order.
std::unique_ptr<command_t> generate_command();
std::unique_ptr<command_t> get_command();
std::unique_ptr<command_t> show_command();
std::unique_ptr<command_t> explain_command();
std::unique_ptr<command_t> map_command();
std::unique_ptr<command_t> save_command();
std::unique_ptr<command_t> complete_command();
std::unique_ptr<command_t> info_command();
std::unique_ptr<command_t> compare_command();
std::unique_ptr<command_t> list_command();
std::unique_ptr<command_t> presets_command();
std::unique_ptr<command_t> batch_command();

} // namespace nrwave
