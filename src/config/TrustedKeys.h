#pragma once

#include <string>
#include <vector>

#include "FileText.h"

namespace zendry {

// Texts that the user trusts, in the file "trusted" of the settings' folder: one line for each,
// with its digest and the text. Read anew at each call, since other programs of ours write it too.
class TrustedKeys {
 public:
  // `folder` is that of the settings; empty: nothing is kept, and nothing is trusted.
  explicit TrustedKeys(const std::string& folder);

  bool Has(const std::string& key) const;
  // Adds the texts that are not there yet. After the first thousand, the oldest are forgotten.
  mavro::FileResult Add(const std::vector<std::string>& keys) const;

 private:
  std::string path;
};

}  // namespace zendry
