// SPDX-License-Identifier: Apache-2.0
//
// The exported questions about one app: one column of its row, or its whole record. Several
// share a condition; the doubled blanks are kept.
#include <system_info.h>

#include <cstring>
#include <string>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_api_throwing.h"
#include "tav_db_api/tav_db_client_checks.h"
#include "tav_db_api/tav_db_client_text.h"
#include "tav_db_api/tav_db_client_values.h"

namespace {

constexpr char kNoRecord[] = "query sql fail or have no required record in database ";
constexpr char kEmanualKey[] = "com.kordyne/featureconf/emanual.app_id";
constexpr char kNoEmanual[] = "NONE";

// Says that a query failed or found nothing.
int Unanswered(int result, const LogPlace& place) {
  TAV_LOGE_FOR(place, "%s", kNoRecord);
  return result;
}

// What differs between the questions that an integer column answers. kWideId and kNarrowId are
// one condition but for a blank.
struct IntegerColumn {
  const char* name;
  const char* by_id;
  int table_type;  // only logged
};

constexpr char kWideId[] = " where id = ?  ";
constexpr char kNarrowId[] = " where id = ? ";
constexpr IntegerColumn kIspBound = {"is_ispbound", kWideId, 0};
constexpr IntegerColumn kHybrid = {"is_hybrid_tv", kWideId, 1};
constexpr IntegerColumn kUsb = {"is_usb_app", kNarrowId, 0};
constexpr IntegerColumn kRating = {"rating", kWideId, 0};

// Reads the column of the app into *value, which is untouched on a failure. 0 or the failure,
// which is said.
int ReadColumn(const IntegerColumn& column, const char* app_id, int* value,
               const LogPlace& place = LogPlace::Here()) REQUIRES(g_Mute) {
  if (PlatformRefuses(place) || HasNull({app_id, value}, place) ||
      IsEmpty(app_id, kAppIdIsEmpty, place)) {
    return kFailed;
  }
  const Query query = Query(column.by_id).Bind(app_id).AndVisible();
  int read = 0;
  const int result =
      GetIntValueByKey(&read, column.name, query.Condition(), column.table_type, query.Binds());
  if (result != 0) return Unanswered(result, place);
  *value = read;
  return 0;
}

// The whole of an exported question: 0 when the app's flag is set, -1 when it is clear, else what
// reading it gave.
int FlagOf(const IntegerColumn& column, const char* app_id,
           const LogPlace& place = LogPlace::Here()) try {
  const TavCall call;
  TAV_LOGI_FOR(place, "Start,app_id:[%s]", Printable(app_id));
  const DatabaseLock lock;
  int value = 0;
  int result = ReadColumn(column, app_id, &value, place);
  if (result != 0) return result;
  result = value != 0 ? 0 : kFailed;
  TAV_LOGI_FOR(place, "Finish,app_id:[%s],result:[%d]", app_id, result);
  return result;
} catch (...) {
  return AnswerException(place.function);
}

// Gives the caller a new block of TAV_TEXT_SIZE bytes with the text.
int DeliverText(const char* text, char** out, const char* no_memory,
                const LogPlace& place = LogPlace::Here()) {
  MallocText block = NewText(text);
  if (block == nullptr) {
    TAV_LOGE_FOR(place, "%s", no_memory);
    return kFailed;
  }
  *out = block.release();
  return 0;
}

// What differs between the questions that a text column answers.
struct TextColumn {
  const char* name;
  int table_type;  // anything but kConfigTableType: the apps table
  const char* no_memory;
};

int ReadText(const TextColumn& column, const Query& query, char** out,
             const LogPlace& place = LogPlace::Here()) REQUIRES(g_Mute) {
  char value[TAV_TEXT_SIZE] = {};
  const int result =
      GetStrValueByKey(value, column.name, query.Condition(), column.table_type, query.Binds());
  if (result != 0) return Unanswered(result, place);
  return DeliverText(value, out, column.no_memory, place);
}

// The id that the platform names; null after a log when it names none.
MallocText PlatformEmanualId() {
  char* value = nullptr;
  const int result = system_info_get_custom_string(kEmanualKey, &value);
  MallocText id(result == 0 ? value : nullptr);
  if (id == nullptr) {
    TAV_LOGE("failed to get emanual's id, key:com.kordyne/featureconf/emanual.app_id");
  } else {
    TAV_LOGI("emanual's id is %s", id.get());
  }
  return id;
}

// The id that the database names, as a text of the caller's.
int DatabaseEmanualId(char* id) {
  const DatabaseLock lock;
  const Query query = Query("  where name  = ? ").Bind("EMANUAL_ID");
  const int result = GetStrValueByKey(id, "", query.Condition(), kConfigTableType, query.Binds());
  if (result != 0) {
    TAV_LOGE("query sql fail or have no required record in database(EMANUAL_ID)");
  } else {
    TAV_LOGI("EmanualID in DB is[%s]", id);
  }
  return result;
}

}  // namespace

int tav_is_isp_app(const char* appId) {
  return FlagOf(kIspBound, appId);
}

int tav_is_hybrid_app(const char* appId) {
  return FlagOf(kHybrid, appId);
}

int tav_check_is_usb_app(const char* appId) try {
  const TavCall call;
  TAV_LOGI("Start,app_id:[%s]", Printable(appId));
  const DatabaseLock lock;
  int is_usb_app = 0;
  const int result = ReadColumn(kUsb, appId, &is_usb_app);
  TAV_LOGI("Finish,app_id:[%s],ret:[%d],iUsbApp:[%d]", Printable(appId), result, is_usb_app);
  return result == 0 ? is_usb_app : result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_rating(const char* appId, int* rating) try {
  const TavCall call;
  TAV_LOGI("Start,app_id:[%s]", Printable(appId));
  const DatabaseLock lock;
  const int result = ReadColumn(kRating, appId, rating);
  if (result == 0) TAV_LOGI("Finish, app_id:[%s] ,rating:[%d] ", appId, *rating);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_pkgname_by_nativeid(const char* nativeId, char** pkgName) try {
  const TavCall call;
  TAV_LOGI("Start,native_id:[%s]", Printable(nativeId));
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({nativeId, pkgName}) ||
      IsEmpty(nativeId, "native_id is empty ")) {
    return kFailed;
  }
  return ReadText({"pkgname", 0, "pkgname malloc is NULL"},
                  Query("  where hybrid_app = ?  ").Bind(nativeId).AndVisible(), pkgName);
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_runtitle_by_ait_id(const char* aitOrgId, const char* aitAppId,
                                   char** runTitle) try {
  const TavCall call;
  constexpr char kIsEmpty[] = "AIT_org_id or AIT_app_id is empty ";
  TAV_LOGI("Start,org_id:[%s],app_id:[%s]", Printable(aitOrgId), Printable(aitAppId));
  const DatabaseLock lock;
  if (PlatformRefuses() || HasNull({aitOrgId, aitAppId, runTitle}) || IsEmpty(aitOrgId, kIsEmpty) ||
      IsEmpty(aitAppId, kIsEmpty)) {
    return kFailed;
  }
  return ReadText(
      {"run_title", 1, "runtitle malloc is NULL"},
      Query(" where ait_orgid = ?  and ait_appid = ?  ").Bind(aitOrgId).Bind(aitAppId).AndVisible(),
      runTitle);
} catch (...) {
  return AnswerException(__func__);
}

int tav_find_app(const char* aitOrgId, const char* aitAppId, char** runTitle) {
  return tav_get_app_runtitle_by_ait_id(aitOrgId, aitAppId, runTitle);
}

int tav_get_appid_by_runtitle(const char* runTitle, char** appId) try {
  const TavCall call;
  TAV_LOGI("Start,runtitile:[%s]", Printable(runTitle));
  const DatabaseLock lock;
  if (HasNull({runTitle, appId})) return kFailed;
  tav_app_info_s info;
  const int result = throwing::GetAppInfoByRuntitle(&info, runTitle);
  if (result != 0) return Unanswered(result, LogPlace::Here());
  return DeliverText(info.app_id, appId, "app_id malloc is NULL");
} catch (...) {
  return AnswerException(__func__);
}

int tav_check_app_installed_by_runtitle(const char* runTitle, int* status) try {
  const TavCall call;
  TAV_LOGI("Start,runtitile:[%s]", Printable(runTitle));
  const DatabaseLock lock;
  if (HasNull({runTitle, status}) || IsEmpty(runTitle, kRunTitleIsEmpty)) return kFailed;
  tav_app_info_s info;
  const int result = throwing::GetAppInfoByRuntitle(&info, runTitle);
  *status = result == 0 ? 0 : 1;
  TAV_LOGI("Finish,runtitile:[%s],status:[%d]", runTitle, *status);
  // Not found is an answer, not a failure.
  return result == kFailed ? 0 : result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_emanual_id(char** appId) try {
  const TavCall call;
  TAV_LOGI("Start");
  if (appId == nullptr) {
    TAV_LOGW("in param is NULL");
    return kFailed;
  }
  MallocText id = PlatformEmanualId();
  if (id != nullptr && std::strcmp(id.get(), kNoEmanual) != 0) {
    TAV_LOGI("id from emanual is not NONE, is [%s]", id.get());
    *appId = id.release();
    return 0;
  }
  TAV_LOGW(
      "failed to get emanual id, or local set is NONE, id from emanual is NONE, so go to get the db emanual id");
  char value[TAV_TEXT_SIZE] = {};
  const int result = DatabaseEmanualId(value);
  if (result != 0) return result;
  id.reset(strdup(value));
  if (id == nullptr) {
    TAV_LOGE("emanual id malloc is NULL");
    return kFailed;
  }
  *appId = id.release();
  return 0;
} catch (...) {
  return AnswerException(__func__);
}
