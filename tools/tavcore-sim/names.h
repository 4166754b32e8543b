// SPDX-License-Identifier: Apache-2.0
//
// Where the service is found on the bus.
#ifndef TOOLS_TAVCORE_SIM_NAMES_H_
#define TOOLS_TAVCORE_SIM_NAMES_H_

namespace tavcore {

inline constexpr char kServiceName[] = "org.tizen.tv.tavcore.server";
inline constexpr char kServicePath[] = "/org/tizen/tv/tavcore/server";
inline constexpr char kServiceInterface[] = "org.tizen.tv.tavcore.server.interface";
inline constexpr char kControlInterface[] = "org.tizen.tv.tavcore.server.control";
inline constexpr char kBenchmarkInterface[] = "org.tizen.tv.tavcore.server.benchmark";

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_NAMES_H_
