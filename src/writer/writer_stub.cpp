// Placeholder until the writer lands.
#include "writer/writer.hpp"
#include "document/module1.hpp"
namespace vornelt {
void NewEDL_02() { Module1.isModified = true; }
void PunktImPunkt() {}
std::string FormatReelNames(std::string_view name) { return std::string(name); }
void SaveAsDialog() {}
void SaveOhneDialog() {}
std::string SuggestedSaveName(std::string_view loadedName) { return std::string(loadedName); }
}  // namespace vornelt
