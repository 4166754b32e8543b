// SPDX-License-Identifier: Apache-2.0
//
// All installed apps as an XML file at a fixed place. Values stand in it as they are: no
// character is escaped.
#include <tzplatform_config.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_app_info.h"
#include "tav_db_api/tav_db_client_app_list.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_text.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

constexpr int kDataDirectory = 2;  // the platform's number of the variable
constexpr char kXmlFile[] = "/tavcore/common/apps_info.xml";
constexpr ListComplaints kComplaints = {"failed to malloc app_list", nullptr};

// A link or a relative part in the way could lead the writer elsewhere. A path that does not
// resolve yet is left to the opening.
bool IsRealPath(const char* path) {
  const MallocText real(realpath(path, nullptr));
  TAV_LOGI("RealPath is [%s]", Printable(real.get()));
  if (real == nullptr || std::strcmp(real.get(), path) == 0) return true;
  TAV_LOGE("realPaths is not realpath, so can not open it!!!");
  return false;
}

void WriteApp(FILE* file, const tav_app_info_s& app) {
  std::fprintf(file,
               "<widget id=\"%s\" name=\"%s\" lock=\"%d\" hidden=\"%d\" runTitle=\"%s\" "
               "size=\"%ld\" myAppIdx=\"%d\" network=\"%d\">\n"
               "<installedPath>%s</installedPath>\n"
               "<icon>%s</icon>\n"
               "</widget>\n",
               app.app_id, app.app_title, app.is_lock, app.is_hidden, app.app_runtitle,
               static_cast<long>(app.size), app.app_index, app.is_network, app.app_installed_path,
               app.app_icon_path);
}

// Takes what was written down to the device. A file of a kind that knows no such thing, a pipe
// for one, has all of it already.
bool Sync(FILE* file) {
  if (fsync(fileno(file)) == 0) return true;
  return errno == EINVAL || errno == EROFS || errno == ENOTSUP || errno == ENOSYS;
}

// Writes the whole document, down to the device, and closes the file. False, after a log, when
// it did not get there.
bool WriteDocument(File file, const tav_app_info_s* list, int count) {
  std::fputs("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n", file.get());
  for (int i = 0; i < count; ++i) WriteApp(file.get(), list[i]);
  std::fputs("</list>\n", file.get());
  const bool is_flushed = std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
  const bool is_synced = Sync(file.get());
  const bool is_closed = std::fclose(file.release()) == 0;
  if (is_flushed && is_synced && is_closed) return true;
  TAV_LOGE("failed to write xml file");
  return false;
}

int WriteApps(File file) REQUIRES(g_Mute) {
  Query query("  where is_app_available = ? and is_need_reset = ? and install_state = ? ");
  query.Bind(kAvailable).Bind(kNotMarkedForReset).Bind(kInstalled);
  int count = 0;
  const int counted = GetAppsTableCount(&count, query.Condition(), 0, query.Binds());
  if (counted != 0) {
    TAV_LOGE("failed to get AppsTable Count ");
    return counted;
  }
  if (count == 0) {
    TAV_LOGI("real_count is 0 ");
    return 0;
  }
  TAV_LOGI("real_count:%d", count);
  tav_app_info_s* records = nullptr;
  int delivered = 0;
  const int result = DeliverList(
      count, &records, &delivered, kComplaints, [&](tav_app_info_s* list) REQUIRES(g_Mute) {
        return GetAppsTableList(list, count, query.Condition(), 0, query.Binds(), false);
      });
  MallocPtr<tav_app_info_s> list(records);
  if (result != 0) return result;
  if (!WriteDocument(std::move(file), list.get(), count)) return kFailed;
  list.reset();
  TAV_LOGI("Finish");
  return 0;
}

}  // namespace

int tav_write_all_app_info_to_xml(char** path) try {
  const TavCall call;
  TAV_LOGI("Start");
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({path})) return kFailed;
  *path = NewText("").release();
  if (*path == nullptr) {
    TAV_LOGE("keydata malloc is NULL");
    return kFailed;
  }
  const char* directory = tzplatform_getenv(static_cast<enum tzplatform_variable>(kDataDirectory));
  std::snprintf(*path, TAV_TEXT_SIZE, "%s%s", directory != nullptr ? directory : "", kXmlFile);
  if (!IsRealPath(*path)) return kFailed;
  File file(std::fopen(*path, "w+e"));
  if (file == nullptr) {
    TAV_LOGE("failed to open xml file");
    return kFailed;
  }
  return WriteApps(std::move(file));
} catch (...) {
  return AnswerException(__func__);
}
