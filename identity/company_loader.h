#pragma once

#include <QString>

#include "session/data_access.h"

namespace identity {

/// Copies the company row and the row of the operating site into the session, and titles the screen after them.
class CompanyLoader {
  public:
    CompanyLoader(session::SessionContext& context, session::DataAccess& data) : context_(context), data_(data) {}

    /// Loads company and site. True when the company has its row. An operating site that isn't on file moves the
    /// installation to "000", and that is stored; one that couldn't be read leaves it where it is.
    bool LoadCompanyInformation();

    /// Title of the main screen: the program, the site or "(全社)", the running staff member. Reads the site's name
    /// anew.
    QString ProgramTitle();

  private:
    bool LoadCompanyRow();
    /// Reads the row of the operating site, falling back to "000".
    bool ReadSite(std::unique_ptr<store::Recordset>& row);
    void LoadSite();
    void ResetOperatingSite(const QString& code);

    session::SessionContext& context_;
    session::DataAccess& data_;
};

}  // namespace identity
