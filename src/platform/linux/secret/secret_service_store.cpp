#include "platform/linux/secret/secret_service_store.h"

#include <libsecret/secret.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vesko {
namespace {

const SecretSchema* schema() {
  static const SecretSchema kSchema = {"com.tarnwick.vesko.ai",
                                       SECRET_SCHEMA_DONT_MATCH_NAME,
                                       {
                                           {"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                           {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                           {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING},
                                       },
                                       0,
                                       nullptr,
                                       nullptr,
                                       nullptr,
                                       nullptr,
                                       nullptr,
                                       nullptr,
                                       nullptr};
  return &kSchema;
}

// Without a session bus GLib would try to autolaunch one through the X display: say plainly that
// there is no Secret Service instead of starting daemons behind the learner's back.
bool hasSessionBus() {
  if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address)
    return true;
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  std::error_code ignored;
  return runtime && *runtime &&
         std::filesystem::exists(std::filesystem::path(runtime) / "bus", ignored);
}

SecretStoreError noBus() {
  return {"no D-Bus session bus, so no Secret Service"};
}

SecretStoreError fromGError(GError* error) {
  SecretStoreError out{error && error->message ? error->message : "Secret Service error"};
  if (error) g_error_free(error);
  return out;
}

}  // namespace

std::expected<std::string, SecretStoreError> SecretServiceStore::read(
    std::string_view account) const {
  if (!hasSessionBus()) return std::unexpected(noBus());
  const std::string name(account);
  const std::string service(kService);
  GError* error = nullptr;
  gchar* password = secret_password_lookup_sync(schema(), nullptr, &error, "service",
                                                service.c_str(), "account", name.c_str(), nullptr);
  if (error) {
    if (password) secret_password_free(password);
    return std::unexpected(fromGError(error));
  }
  if (!password) return std::string();
  std::string key(password);
  secret_password_free(password);  // wipes the copy libsecret held
  return key;
}

std::expected<void, SecretStoreError> SecretServiceStore::save(std::string_view account,
                                                               std::string_view key) {
  if (!hasSessionBus()) return std::unexpected(noBus());
  const std::string name(account);
  const std::string service(kService);
  GError* error = nullptr;
  secret_password_clear_sync(schema(), nullptr, &error, "service", service.c_str(), "account",
                             name.c_str(), nullptr);
  if (error) return std::unexpected(fromGError(error));
  if (key.empty()) return {};
  const std::string label = "Vesko: " + name + " API key";
  const std::string value(key);
  secret_password_store_sync(schema(), SECRET_COLLECTION_DEFAULT, label.c_str(), value.c_str(),
                             nullptr, &error, "service", service.c_str(), "account", name.c_str(),
                             nullptr);
  if (error) return std::unexpected(fromGError(error));
  return {};
}

}  // namespace vesko
