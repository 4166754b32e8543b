// SPDX-License-Identifier: Apache-2.0
//
// One thread that reads in a soak, and looks at all that it reads.
#ifndef TESTS_SOAK_READER_H_
#define TESTS_SOAK_READER_H_

#include "soak/tally.h"

namespace soak {

class Reader {
 public:
  Reader(int number, Tally& tally) : m_tally(tally), m_turn(number) {}

  // Makes the next of the calls. Throws when what came back is of no transaction.
  void Read();

 private:
  // The calls; false when the database was busy.
  bool MakeCall();
  bool ReadOne();
  template <typename Ask>
  bool ReadList(const Ask& ask);
  bool ReadShortList();
  bool ReadCount();
  bool ReadJson();
  bool ReadJsonList();
  bool ReadSetting();

  void Saw(int generation);

  Tally& m_tally;
  int m_turn;
  int m_newest = 1;
};

}  // namespace soak

#endif  // TESTS_SOAK_READER_H_
