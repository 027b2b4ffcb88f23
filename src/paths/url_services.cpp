// The URL services module, kept from start to stop for the URL helpers, with the host module that
// provides map loading.
#include "frame/lifecycle_steps.h"
#include "paths/url_services.h"
#include "platform/modules.h"

namespace vex::paths {
namespace {
HMODULE g_url_services = nullptr;
HMODULE g_host_module = nullptr;
}  // namespace

int LoadUrlServices() {
  g_url_services = platform::LoadUrlServices();
  g_host_module = platform::FindLoadedModule("VEX.DLL");
  return 1;
}

int FreeUrlServices() {
  if (g_url_services) {
    platform::FreeUrlServices(g_url_services);
    g_url_services = nullptr;
  }
  return 1;
}

HMODULE UrlServicesModule() { return g_url_services; }
HMODULE MapLoaderModule() { return g_host_module; }

}  // namespace vex::paths
