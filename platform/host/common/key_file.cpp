// SPDX-License-Identifier: Apache-2.0
// Key files of the device; see the header.
#include "key_file.h"

#include "device_root.h"
#include "dlog.h"
#include "parse.h"
#include "read_file.h"

namespace tav_host {

KeyFile::KeyFile(const char* tag, const char* name)
    : m_tag(tag), m_path(DeviceRoot() + "/" + name), m_file(g_key_file_new()) {
  GErrorPtr error;
  if (const auto content = ReadFile(m_path, error)) {
    const bool is_read = g_key_file_load_from_data(m_file.get(), content->data(), content->size(),
                                                   G_KEY_FILE_NONE, Out(error));
    if (is_read) return;
  }
  dlog_print(DLOG_ERROR, m_tag, "cannot read %s: %s", m_path.c_str(), error->message);
  m_file.reset();
}

bool KeyFile::HasGroup(const char* group) const {
  return m_file != nullptr && g_key_file_has_group(m_file.get(), group);
}

std::optional<std::string> KeyFile::Text(const char* group, const char* key) const {
  if (m_file == nullptr) return std::nullopt;
  GErrorPtr error;
  const GText text(g_key_file_get_string(m_file.get(), group, key, Out(error)));
  if (text != nullptr) return std::string(text.get());
  // A device need not have every key: its absence is no fault of the file.
  const bool missing =
      g_error_matches(error.get(), G_KEY_FILE_ERROR, G_KEY_FILE_ERROR_KEY_NOT_FOUND);
  dlog_print(missing ? DLOG_DEBUG : DLOG_ERROR, m_tag, "%s: %s", m_path.c_str(), error->message);
  return std::nullopt;
}

std::optional<int> KeyFile::Int(const char* group, const char* key) const {
  const auto text = Text(group, key);
  if (!text) return std::nullopt;
  const auto number = ParseInt(*text);
  if (!number) {
    dlog_print(DLOG_ERROR, m_tag, "%s: %s of [%s] is \"%s\", not an int", m_path.c_str(), key,
               group, text->c_str());
  }
  return number;
}

}  // namespace tav_host
