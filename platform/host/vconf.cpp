// SPDX-License-Identifier: Apache-2.0
// The settings interface: checks and the border; the store and the watches do the work.
#include "vconf.h"

#include <string.h>

#include "common/border.h"
#include "vconf_store.h"
#include "vconf_watch.h"

namespace {

using tav_host::kVconfTag;
using tav_host::Place;

bool IsNull(const void* argument) {
  if (argument == nullptr) dlog_print(DLOG_ERROR, kVconfTag, "a null argument");
  return argument == nullptr;
}

// Runs `body` with the key's place; VCONF_OK when it succeeds.
template <typename Body>
int WithKey(const char* key, Body&& body) {
  return tav_host::AtBorder<int>(kVconfTag, VCONF_ERROR, [&] {
    auto place = tav_host::Locate(key);
    return place && body(std::move(*place)) ? VCONF_OK : VCONF_ERROR;
  });
}

// Gives the key's value to `take`, which returns whether it could keep it.
template <typename T, typename Take>
int GetValue(const char* key, Take&& take) {
  return WithKey(key, [&](const Place& place) {
    const auto value = tav_host::ReadValue(place);
    if (!value) return false;
    if (const T* typed = std::get_if<T>(&*value)) return take(*typed);
    dlog_print(DLOG_ERROR, kVconfTag, "%s is of the type %s, another one is asked for", key,
               tav_host::TypeName(*value));
    return false;
  });
}

template <typename T>
T* InNode(keynode_t* node) {
  return node == nullptr ? nullptr : std::get_if<T>(&node->value);
}

}  // namespace

int vconf_get_int(const char* key, int* value) {
  if (IsNull(value)) return VCONF_ERROR;
  return GetValue<int>(key, [&](int number) {
    *value = number;
    return true;
  });
}

int vconf_set_int(const char* key, const int value) {
  return WithKey(key, [&](const Place& place) { return WriteValue(place, value); });
}

char* vconf_get_str(const char* key) {
  char* copy = nullptr;
  GetValue<std::string>(key, [&](const std::string& text) {
    copy = strdup(text.c_str());
    return copy != nullptr;
  });
  return copy;
}

int vconf_set_str(const char* key, const char* value) {
  if (IsNull(value)) return VCONF_ERROR;
  return WithKey(key, [&](const Place& place) { return WriteValue(place, std::string(value)); });
}

int vconf_unset(const char* key) {
  return WithKey(key, [](const Place& place) { return RemoveValue(place); });
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn cb, void* user_data) {
  if (IsNull(reinterpret_cast<const void*>(cb))) return VCONF_ERROR;
  return WithKey(
      key, [&](Place place) { return tav_host::StartWatch(std::move(place), cb, user_data); });
}

int vconf_ignore_key_changed(const char* key, vconf_callback_fn cb) {
  if (IsNull(reinterpret_cast<const void*>(cb))) return VCONF_ERROR;
  return WithKey(key, [&](const Place& place) { return tav_host::EndWatch(place.key, cb); });
}

char* vconf_keynode_get_name(keynode_t* node) {
  return node == nullptr ? nullptr : node->name.data();
}

int vconf_keynode_get_int(keynode_t* node) {
  const int* number = InNode<int>(node);
  return number == nullptr ? 0 : *number;
}

char* vconf_keynode_get_str(keynode_t* node) {
  std::string* text = InNode<std::string>(node);
  return text == nullptr ? nullptr : text->data();
}
