#include "Application.h"

namespace mavro {

Application theApplication;

namespace {

constexpr int cBuiltInStrip = 1;
constexpr int cBuiltInSize = 24;

}  // namespace

Application::Application() : idleHook(TheIdleSlot().hook) {
  RegisterImageList(cBuiltInStrip, cBuiltInSize, cBuiltInSize, 0);
}

void Application::RegisterImageList(int resourceId, int width, int height, int count) {
  imageLists.push_back({resourceId, width, height, count});
}

const ImageStrip* Application::FindImageList(int resourceId) const {
  for (const ImageStrip& strip : imageLists)
    if (strip.resourceId == resourceId) return &strip;
  return nullptr;
}

std::string AppDirOf(const std::string& argv0, const std::string& current) {
  std::string dir = argv0;
  for (char& c : dir)
    if (c == '\\') c = '/';
  const size_t slash = dir.rfind('/');
  if (slash == std::string::npos) return dir;
  if (dir[0] != '/') return AppDirOf(current + "/" + dir, current);
  if (slash > 0) dir.erase(slash + 1);
  return dir;
}

}  // namespace mavro
