// SPDX-License-Identifier: Apache-2.0
//
// Prints the id of the app that its argument names, in C++.
#include <iostream>
#include <tav_db_api.hpp>

int main(int argc, char** argv) {
  const tav::Result<tav::AppInfo> app = tav::GetAppInfo(argc == 2 ? argv[1] : nullptr);
  if (!app) return 1;
  std::cout << tav::TextOf(app->app_id) << "\n";
}
