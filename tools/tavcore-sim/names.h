// SPDX-License-Identifier: Apache-2.0
//
// Where the service is found on the bus; where its database is on the device.
#ifndef TOOLS_TAVCORE_SIM_NAMES_H_
#define TOOLS_TAVCORE_SIM_NAMES_H_

namespace tavcore {

inline constexpr char kServiceName[] = "org.tizen.tv.tavcore.server";
inline constexpr char kServicePath[] = "/org/tizen/tv/tavcore/server";
inline constexpr char kServiceInterface[] = "org.tizen.tv.tavcore.server.interface";
inline constexpr char kControlInterface[] = "org.tizen.tv.tavcore.server.control";
inline constexpr char kBenchmarkInterface[] = "org.tizen.tv.tavcore.server.benchmark";

inline constexpr char kDatabaseName[] = "/.tavcore.db";  // in TZPLATFORM_DATABASE_DIRECTORY

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_NAMES_H_
