// Placeholder until the window handlers land.
namespace vornelt {}
