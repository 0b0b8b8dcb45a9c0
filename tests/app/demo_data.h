#pragma once

#include <map>
#include <string>
#include <vector>

namespace orva {

/// What a command printed and how it ended.
struct Ran {
  int status = -1;
  std::string out = {};
  std::string err = {};
};

/// Runs a command on a program folder, in this process.
Ran runCommand(const std::string& folder, const std::vector<std::string>& arguments, const std::string& input = {});

/// The script that fills the demonstration company, or one that goes on from there.
std::string demoScript(const std::string& name = "company.sql");

/// Writes a workbook whose texts become the cells that Excel makes of them.
void writeWorkbook(const std::string& path, const std::string& sheet,
                   const std::vector<std::vector<std::string>>& rows);

std::vector<std::string> assetHeadings();
/// One good asset under these headings.
std::vector<std::string> goodAsset(const std::string& physicalId);
/// An asset with other texts under some of the headings.
std::vector<std::string> with(std::vector<std::string> asset, const std::map<std::string, std::string>& cells);

}  // namespace orva
