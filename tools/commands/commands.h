#pragma once

namespace CLI {
class App;
}

namespace LmTool {

// Each adds one subcommand, which runs while the command line is parsed.
void AddTypesCommand(CLI::App& app);
void AddInfoCommand(CLI::App& app);
void AddConvertersCommand(CLI::App& app);
void AddConvertCommand(CLI::App& app);
void AddSynthCommand(CLI::App& app);
void AddGalleryCommand(CLI::App& app);
void AddBenchCommand(CLI::App& app);
void AddCompletionCommand(CLI::App& app);
void AddManualCommand(CLI::App& app);

}  // namespace LmTool
