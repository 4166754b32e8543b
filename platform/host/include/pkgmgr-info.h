/* SPDX-License-Identifier: Apache-2.0 */
/*
 * What the package manager knows of a package. On a PC it is the key file
 * <device root>/packages.ini, one group for each package, with the keys "version" and "icon".
 *
 * A handle owns the texts got from it until it is destroyed. Handles of different kinds are not
 * interchangeable. Every function may be called from any thread and runs with cancellation
 * disabled; a failure gives a negative result, leaves the out value as it was and its cause in the
 * log.
 */
#ifndef PKGMGR_INFO_H_
#define PKGMGR_INFO_H_

#define PKGMGR_INFO_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum pkgmgrinfo_error_e {
  PMINFO_R_OK = 0,
  PMINFO_R_ERROR = -1, /* no such package or entry, or packages.ini cannot be read */
  PMINFO_R_EINVAL = -2 /* a null argument, or a handle of another kind */
} pkgmgrinfo_error_e;

typedef void* pkgmgrinfo_pkginfo_h;
typedef void* pkgmgrinfo_appinfo_h;

PKGMGR_INFO_API int pkgmgrinfo_pkginfo_get_pkginfo(const char* pkgid, pkgmgrinfo_pkginfo_h* handle);
PKGMGR_INFO_API int pkgmgrinfo_pkginfo_get_version(pkgmgrinfo_pkginfo_h handle, char** version);
PKGMGR_INFO_API int pkgmgrinfo_pkginfo_destroy_pkginfo(pkgmgrinfo_pkginfo_h handle);

PKGMGR_INFO_API int pkgmgrinfo_appinfo_get_appinfo(const char* appid, pkgmgrinfo_appinfo_h* handle);
PKGMGR_INFO_API int pkgmgrinfo_appinfo_get_icon(pkgmgrinfo_appinfo_h handle, char** icon);
PKGMGR_INFO_API int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle);

#ifdef __cplusplus
}
#endif

#endif /* PKGMGR_INFO_H_ */
