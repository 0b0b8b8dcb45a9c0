#pragma once

#include <array>
#include <string_view>

namespace orva {

/// One line of the guidelines page.
struct GuidelineLine {
  /// 1 to 3; 0 for the heading that stands above every section.
  int section = 0;
  std::string_view text;
};

inline constexpr int kGuidelineSections = 3;

/// The guidelines, one line a label, in reading order.
inline constexpr std::array<GuidelineLine, 27> kGuidelineLines{{
    {0, "Guidelines for importing data from Excel to ORVA"},
    {1, "Points to be checked for selecting the fields"},
    {1, "1. Details of Asset should be in one line and the header row should contain the pre-defined field names"},
    {1, "2. All the fields that can be imported to orva are listed in the 'Select Fields' screen"},
    {1, "3. The Column name in excel should correspond to what is listed "},
    {1, "4. The field marked  M  means Mandatory both in ORVA as well as excel. Values cannot be blank"},
    {1, "5. The field marked  O  means Optional both in ORVA as well as Excel. Values can be blank"},
    {1, "6. MFOE means Mandatory in ORVA but Optional in Excel. Values if blank will be given default values"},
    {1, "7. If the row is coloured blue then it is a mandatory field not present in excel "},
    {1, "8. If the row is coloured red then it is a field that you want to import but not present in excel"},
    {2, "Points to be checked for importing the data from excel to ORVA"},
    {2, "1. Check if the data type of each field selected corresponds to what is listed"},
    {2, "2. For Date fields the format in excel should be Custom - dd/mm/yyyy"},
    {2, "3. If the Data Type is not matching it will display the message"},
    {2, "4. While reading Excel the system does not recognize the data type correctly."},
    {2, "5. So the text fields should start with '(single Quote) if the system gives 'Data Type Mismatch' error"},
    {2, "6. If the system gives 'Numeric Overflo.w' error then it is a numeric field where some text is entered  OR"},
    {2, "   An optional text field where most of the values are blank. So preceed it with a single quote."},
    {3, "Points to be checked for validating the data from excel to ORVA"},
    {3, "1. If the total no. of errors are Zero only then the system will import the data to ORVA"},
    {3, "2. If the cell is coloured pink then it means the Value will not be accepted in ORVA and is an error"},
    {3, "3. In that case either it is blank or not defined in the masters or size is exceeding the defined size"},
    {3, "4. If the cell is coloured yellow then it means it is not an error but it is a warning."},
    {3, "5. In that case default values will be given for blank cells or else the system will update the Masters"},
    {3,
     "6. If the cells are coloured pink or yellow you can rectify the excel file and save it without closing import"},
    {3, "7. If any changes are made to the excel file while the import is on then to maintain the data integrity "},
    {3, "   pls go to the Select fields screen click on the Refresh Button and then continue till the errors are Zero"},
}};

}  // namespace orva
