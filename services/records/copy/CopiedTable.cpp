// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/copy/CopiedTable.h"

namespace KODMS::Services {

const QVector<CopiedTable> &CopiedTable::all()
{
    static const QVector<CopiedTable> tables{{"users", Key::Counted},
                                             {"user_roles", Key::Other},
                                             {"sign_in_failures", Key::Other},
                                             {"customers", Key::Counted},
                                             {"jobs", Key::Counted},
                                             {"robot_params", Key::Other},
                                             {"orig_files", Key::Counted},
                                             {"file_delete_marks", Key::Other},
                                             {"job_flows", Key::Counted},
                                             {"job_compress", Key::Counted},
                                             {"orders", Key::Counted},
                                             {"questions", Key::Counted},
                                             {"question_pictures", Key::Counted},
                                             {"import_contents", Key::Counted},
                                             {"orig_file_assign", Key::Flow},
                                             {"pre_check_assign", Key::Flow},
                                             {"events", Key::Counted}};
    return tables;
}

} // namespace KODMS::Services
