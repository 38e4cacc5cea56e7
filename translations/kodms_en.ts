<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>AccessibleNames</name>
    <message>
        <source>按料号名称筛选</source>
        <translation>filter by job name</translation>
    </message>
    <message>
        <source>按板层筛选</source>
        <translation>filter by layers</translation>
    </message>
    <message>
        <source>按 feature 数筛选</source>
        <translation>filter by features</translation>
    </message>
    <message>
        <source>按前处理人筛选</source>
        <translation>filter by pre-processor</translation>
    </message>
    <message>
        <source>按批号筛选</source>
        <translation>filter by batch number</translation>
    </message>
    <message>
        <source>按状态筛选</source>
        <translation>filter by status</translation>
    </message>
    <message>
        <source>搜索内容</source>
        <translation>search for</translation>
    </message>
    <message>
        <source>搜索哪一项</source>
        <translation>search in</translation>
    </message>
    <message>
        <source>指派给</source>
        <translation>assign to</translation>
    </message>
    <message>
        <source>料号列表</source>
        <translation>list of jobs</translation>
    </message>
    <message>
        <source>所选料号的问题</source>
        <translation>questions of the selected job</translation>
    </message>
    <message>
        <source>页码</source>
        <translation>page number</translation>
    </message>
    <message>
        <source>文件或文件夹的路径</source>
        <translation>path of the file or folder</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>name</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>select all</translation>
    </message>
</context>
<context>
    <name>Backup</name>
    <message>
        <source>服务正在运行，不能在此时恢复</source>
        <translation>The services are running; nothing can be restored now</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>只有管理员可以备份</source>
        <translation>Only an administrator may make a backup</translation>
    </message>
    <message>
        <source>备份文件已存在，不会覆盖：%1</source>
        <translation>The backup file exists already and is not overwritten: %1</translation>
    </message>
    <message>
        <source>备份到 %1</source>
        <translation>Backing up to %1</translation>
    </message>
    <message>
        <source>恢复 %1</source>
        <translation>Restoring %1</translation>
    </message>
    <message>
        <source>核对 %1</source>
        <translation>Comparing %1</translation>
    </message>
    <message>
        <source>不是备份文件，或已损坏</source>
        <translation>Not a backup, or damaged</translation>
    </message>
    <message>
        <source>已有数据库 %1，只能恢复到空的安装</source>
        <translation>There is a database %1 already; only an empty installation can be restored into</translation>
    </message>
    <message>
        <source>备份来自另一种数据库（%1）</source>
        <translation>The backup comes from another kind of database (%1)</translation>
    </message>
    <message>
        <source>文件库 %1 不是空的，只能恢复到空的安装</source>
        <translation>The file store %1 is not empty; only an empty installation can be restored into</translation>
    </message>
    <message>
        <source>备份中缺少文件 %1</source>
        <translation>The file %1 is not in the backup</translation>
    </message>
    <message>
        <source>备份中的文件与记录不符</source>
        <translation>The files of the backup are not those of its records</translation>
    </message>
    <message>
        <source>此种数据库须用数据库服务器自己的工具恢复，或用 kodms-admin copy 从嵌入式安装复制</source>
        <translation>This kind of database is restored with the database server&apos;s own tools, or filled by kodms-admin copy from an embedded installation</translation>
    </message>
</context>
<context>
    <name>Change</name>
    <message>
        <source>被指派人不存在或已停用</source>
        <translation>the assignee does not exist or is disabled</translation>
    </message>
    <message>
        <source>已指派给 %1，请刷新后再试</source>
        <translation>already assigned to %1; refresh and try again</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>state</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>file</translation>
    </message>
    <message>
        <source>指派</source>
        <translation>assignment</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>remark</translation>
    </message>
    <message>
        <source>没有打开的数据库</source>
        <translation>no database is open</translation>
    </message>
    <message>
        <source>已保存，但后续处理失败</source>
        <translation>saved, but what should follow failed</translation>
    </message>
    <message>
        <source>内部错误，未保存</source>
        <translation>internal error, nothing was saved</translation>
    </message>
    <message>
        <source>请先登录</source>
        <translation>please sign in first</translation>
    </message>
    <message>
        <source>该账号已停用</source>
        <translation>the account is disabled</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1（%2）：%3</source>
        <translation>%1 (%2): %3</translation>
    </message>
    <message>
        <source>没有打开的文件库</source>
        <translation>no file store is open</translation>
    </message>
    <message>
        <source>操作人不是当前登录的用户</source>
        <translation>the acting user is not the one who is signed in</translation>
    </message>
    <message>
        <source>您没有该权限</source>
        <translation>you do not have this right</translation>
    </message>
    <message>
        <source>该料号不在您的范围内</source>
        <translation>this job is not in your scope</translation>
    </message>
    <message>
        <source>找不到该料号的流程</source>
        <translation>the flow of this job was not found</translation>
    </message>
    <message>
        <source>%1已被他人更改，请刷新后再试</source>
        <translation>somebody else changed the %1; refresh and try again</translation>
    </message>
    <message>
        <source>%1 于 %2 更改了%3：%4。请刷新后再试</source>
        <translation>%1 changed the %3 on %2: %4. Refresh and try again</translation>
    </message>
    <message>
        <source>查询机器人参数</source>
        <translation>Read robot parameters</translation>
    </message>
    <message>
        <source>修改备注</source>
        <translation>Change remark</translation>
    </message>
    <message>
        <source>更换原始文件</source>
        <translation>Replace original file</translation>
    </message>
    <message>
        <source>更换导入文件</source>
        <translation>Replace imported file</translation>
    </message>
    <message>
        <source>找不到该文件的记录</source>
        <translation>the record of this file was not found</translation>
    </message>
    <message>
        <source>该文件属于其他客户</source>
        <translation>the file belongs to another customer</translation>
    </message>
    <message>
        <source>更改状态</source>
        <translation>Change state</translation>
    </message>
    <message>
        <source>完成流程</source>
        <translation>Finish flow</translation>
    </message>
    <message>
        <source>保存审核结果</source>
        <translation>Save verdict</translation>
    </message>
    <message>
        <source>记录时间</source>
        <translation>Record time</translation>
    </message>
    <message>
        <source>当前状态不允许此操作</source>
        <translation>the present state does not allow this</translation>
    </message>
    <message>
        <source>此操作的前提尚未满足</source>
        <translation>what this needs has not happened yet</translation>
    </message>
    <message>
        <source>文件替换未成功，状态不变</source>
        <translation>the file was not replaced, the state stays</translation>
    </message>
    <message>
        <source>不能以他人名义记录</source>
        <translation>cannot be recorded in somebody else&apos;s name</translation>
    </message>
    <message>
        <source>时间格式无效</source>
        <translation>the time is not valid</translation>
    </message>
    <message>
        <source>没有审核结果，不能记录审核时间</source>
        <translation>there is no verdict, so no review time can be recorded</translation>
    </message>
    <message>
        <source>流程与料号不符</source>
        <translation>flow and job do not belong together</translation>
    </message>
    <message>
        <source>审核结果无效</source>
        <translation>the verdict is not valid</translation>
    </message>
    <message>
        <source>未知的查询条件</source>
        <translation>unknown search condition</translation>
    </message>
    <message>
        <source>指派前处理人</source>
        <translation>Assign pre-processor</translation>
    </message>
    <message>
        <source>重新指派前处理人</source>
        <translation>Reassign pre-processor</translation>
    </message>
    <message>
        <source>该记录与流程不符</source>
        <translation>record and flow do not belong together</translation>
    </message>
    <message>
        <source>指派审核人</source>
        <translation>Assign pre-checker</translation>
    </message>
    <message>
        <source>重新指派审核人</source>
        <translation>Reassign pre-checker</translation>
    </message>
    <message>
        <source>删除文件</source>
        <translation>Delete file</translation>
    </message>
    <message>
        <source>该记录已不存在</source>
        <translation>the record is no longer there</translation>
    </message>
    <message>
        <source>记录已删除，但存储的文件暂时保留：%1</source>
        <translation>the record is deleted, but the stored file stays for now: %1</translation>
    </message>
    <message>
        <source>文件库中没有该文件</source>
        <translation>the file is not in the file store</translation>
    </message>
    <message>
        <source>该文件已被更换，请刷新后再试</source>
        <translation>the file has been replaced; refresh and try again</translation>
    </message>
    <message>
        <source>查询流程</source>
        <translation>Read flows</translation>
    </message>
    <message>
        <source>查询订单</source>
        <translation>Read order</translation>
    </message>
    <message>
        <source>登记文件</source>
        <translation>Register file</translation>
    </message>
    <message>
        <source>没有该客户代码</source>
        <translation>there is no such customer code</translation>
    </message>
    <message>
        <source>文件 GUID 无效</source>
        <translation>the file&apos;s GUID is not valid</translation>
    </message>
    <message>
        <source>文件 GUID 已被使用</source>
        <translation>the file&apos;s GUID is taken</translation>
    </message>
    <message>
        <source>该文件已登记</source>
        <translation>the file is registered already</translation>
    </message>
    <message>
        <source>文件库中没有该文件，未登记</source>
        <translation>the file is not in the file store; not registered</translation>
    </message>
    <message>
        <source>查询问题</source>
        <translation>Read questions</translation>
    </message>
    <message>
        <source>更改问题状态</source>
        <translation>Change state of question</translation>
    </message>
    <message>
        <source>内部错误</source>
        <translation>internal error</translation>
    </message>
    <message>
        <source>文本编码无效</source>
        <translation>the text is not valid UTF-8</translation>
    </message>
    <message>
        <source>文本中含有空字符</source>
        <translation>the text holds a NUL character</translation>
    </message>
    <message>
        <source>文本过长，最多 %1 个字符</source>
        <translation>the text is too long, at most %1 characters</translation>
    </message>
    <message>
        <source>查询用户</source>
        <translation>Read users</translation>
    </message>
    <message>
        <source>取文件</source>
        <translation>Fetch file</translation>
    </message>
    <message>
        <source>存入文件</source>
        <translation>Store file</translation>
    </message>
    <message>
        <source>标记删除文件</source>
        <translation>Mark file for deletion</translation>
    </message>
    <message>
        <source>打包存入文件夹</source>
        <translation>Pack and store folder</translation>
    </message>
    <message>
        <source>问题状态无效</source>
        <translation>the state of the question is not valid</translation>
    </message>
    <message>
        <source>该问题已不存在</source>
        <translation>the question is no longer there</translation>
    </message>
    <message>
        <source>机器人接收料号</source>
        <translation>Take a job for the robot</translation>
    </message>
    <message>
        <source>查询机器人料号</source>
        <translation>Look for the robot&apos;s jobs</translation>
    </message>
    <message>
        <source>交付机器人结果</source>
        <translation>Deliver a robot&apos;s result</translation>
    </message>
    <message>
        <source>没有该料号</source>
        <translation>there is no such job</translation>
    </message>
    <message>
        <source>有多个料号只有大小写不同，无法确定是哪一个</source>
        <translation>several jobs have this name but for upper and lower case</translation>
    </message>
    <message>
        <source>订单未付款</source>
        <translation>the order is unpaid</translation>
    </message>
    <message>
        <source>料号已有变动，机器人的结果不再有效</source>
        <translation>the job has moved on since the robot took it; its result no longer counts</translation>
    </message>
    <message>
        <source>该文件正在被删除，未登记</source>
        <translation>the file is being removed; it was not recorded</translation>
    </message>
    <message>
        <source>导入料号</source>
        <translation>Import a job</translation>
    </message>
    <message>
        <source>导入机器人结果</source>
        <translation>Import the robot&apos;s result</translation>
    </message>
    <message>
        <source>查看历史</source>
        <translation>Read a history</translation>
    </message>
    <message>
        <source>创建问题</source>
        <translation>Raise question</translation>
    </message>
    <message>
        <source>查看问题</source>
        <translation>View question</translation>
    </message>
    <message>
        <source>回复问题</source>
        <translation>Answer question</translation>
    </message>
    <message>
        <source>请填写标题</source>
        <translation>Please give a title</translation>
    </message>
    <message>
        <source>标题含有换行或其他控制字符</source>
        <translation>The title contains a line break or another control character</translation>
    </message>
    <message>
        <source>图片过多，最多 %1 张</source>
        <translation>Too many pictures, at most %1</translation>
    </message>
    <message>
        <source>文件库中没有该图片，未登记</source>
        <translation>The picture is not in the file store, nothing was recorded</translation>
    </message>
    <message>
        <source>%1 于 %2 更改了此问题，请核对后再提交</source>
        <translation>%1 changed this question at %2; please look again before you submit</translation>
    </message>
    <message>
        <source>请填写回复或更改状态</source>
        <translation>Please write an answer or choose another state</translation>
    </message>
    <message>
        <source>审核结果未保存，其余步骤不再进行</source>
        <translation>The verdict was not saved; its other steps are left out</translation>
    </message>
</context>
<context>
    <name>Common</name>
    <message>
        <source>服务尚未启动，没有配置</source>
        <translation>the services are not running, there is no configuration</translation>
    </message>
    <message>
        <source>存入 %1</source>
        <translation>Storing %1</translation>
    </message>
    <message>
        <source>不是当前使用的文件库</source>
        <translation>this is not the file store in use</translation>
    </message>
    <message>
        <source>打包存入 %1</source>
        <translation>Packing and storing %1</translation>
    </message>
    <message>
        <source>文件库中没有该文件</source>
        <translation>the file is not in the file store</translation>
    </message>
</context>
<context>
    <name>Configuration</name>
    <message>
        <source>配置文件 %1：[%2] %3 = “%4” 无效，可接受的值：%5</source>
        <translation>Configuration file %1: [%2] %3 = &quot;%4&quot; is not valid; accepted: %5</translation>
    </message>
    <message>
        <source>配置文件 %1：[%2] %3 为空，而 %4 = %5 需要它</source>
        <translation>Configuration file %1: [%2] %3 is empty, but %4 = %5 needs it</translation>
    </message>
    <message>
        <source>配置文件 %1：[paths] %2 = “%3” 末尾没有路径分隔符，文件名会直接接在后面</source>
        <translation>Configuration file %1: [paths] %2 = &quot;%3&quot; has no path separator at its end; file names will follow it directly</translation>
    </message>
    <message>
        <source>配置文件 %1 第 %2 行：未知的键 [%3] %4，已忽略</source>
        <translation>Configuration file %1, line %2: unknown key [%3] %4, ignored</translation>
    </message>
    <message>
        <source>配置文件 %1 不存在</source>
        <translation>Configuration file %1 does not exist</translation>
    </message>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot make the folder %1</translation>
    </message>
    <message>
        <source>无法写入配置文件 %1：%2</source>
        <translation>Cannot write the configuration file %1: %2</translation>
    </message>
    <message>
        <source>%1 到 %2 之间的整数</source>
        <translation>a whole number from %1 to %2</translation>
    </message>
    <message>
        <source>数字形式的 IP 地址，或留空</source>
        <translation>an IP address in numbers, or nothing</translation>
    </message>
    <message>
        <source>非空文本</source>
        <translation>a text that is not empty</translation>
    </message>
    <message>
        <source>任意文本</source>
        <translation>any text</translation>
    </message>
    <message>
        <source>配置文件 %1 是一个文件夹，需要一个文本文件</source>
        <translation>Configuration file %1 is a folder; a text file is needed</translation>
    </message>
    <message>
        <source>配置文件 %1 不是普通文件</source>
        <translation>Configuration file %1 is not a regular file</translation>
    </message>
    <message>
        <source>无法读取配置文件 %1：%2</source>
        <translation>Cannot read the configuration file %1: %2</translation>
    </message>
    <message>
        <source>配置文件 %1 超过 1 MiB，不是有效的配置文件</source>
        <translation>Configuration file %1 is larger than 1 MiB and cannot be a configuration</translation>
    </message>
    <message>
        <source>配置文件 %1 不是 UTF-8 文本</source>
        <translation>Configuration file %1 is not UTF-8 text</translation>
    </message>
    <message>
        <source>配置文件 %1 第 %2 行无法识别：%3（应为 [段] 或 键 = 值）</source>
        <translation>Configuration file %1, line %2 is not understood: %3 (expected [section] or key = value)</translation>
    </message>
    <message>
        <source>配置文件 %1 第 %2 行：[%3] %4 重复出现</source>
        <translation>Configuration file %1, line %2: [%3] %4 stands there twice</translation>
    </message>
</context>
<context>
    <name>Customers</name>
    <message>
        <source>没有权限查看客户</source>
        <translation>You may not see the customers</translation>
    </message>
</context>
<context>
    <name>DMS_Function</name>
    <message>
        <source>没有指定解压的目标文件夹</source>
        <translation>no folder to unpack to is given</translation>
    </message>
    <message>
        <source>解压 %1</source>
        <translation>Unpacking %1</translation>
    </message>
</context>
<context>
    <name>DatabaseFile</name>
    <message>
        <source>数据库已损坏：%1</source>
        <translation>The database is damaged: %1</translation>
    </message>
    <message>
        <source>数据库的结构版本 %1 不受支持</source>
        <translation>The database has schema version %1, which this program does not know</translation>
    </message>
</context>
<context>
    <name>DatabaseSnapshot</name>
    <message>
        <source>此种数据库须用数据库服务器自己的工具备份，或用 kodms-admin copy 复制到嵌入式安装</source>
        <translation>This kind of database is backed up with the database server&apos;s own tools, or copied into an embedded installation by kodms-admin copy</translation>
    </message>
</context>
<context>
    <name>DeskList</name>
    <message>
        <source>导出列表</source>
        <translation>Export list</translation>
    </message>
    <message>
        <source>%1 已存在，要替换吗？</source>
        <translation>%1 exists already. Replace it?</translation>
    </message>
    <message>
        <source>Excel 工作簿 (*.xlsx)</source>
        <translation>Excel workbook (*.xlsx)</translation>
    </message>
    <message>
        <source>CSV 文件 (*.csv)</source>
        <translation>CSV file (*.csv)</translation>
    </message>
</context>
<context>
    <name>Fetch</name>
    <message>
        <source>取文件（%1）：%2</source>
        <translation>Fetch file (%1): %2</translation>
    </message>
    <message>
        <source>没有记录指向该文件</source>
        <translation>no record names this file</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>无法替换 %1</source>
        <translation>cannot replace %1</translation>
    </message>
    <message>
        <source>取文件 %1</source>
        <translation>Fetching %1</translation>
    </message>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot make the folder %1</translation>
    </message>
</context>
<context>
    <name>FetchTarget</name>
    <message>
        <source>没有配置下载文件夹</source>
        <translation>no download folder is configured</translation>
    </message>
    <message>
        <source>料号名称不能用作文件名</source>
        <translation>the job name cannot be a file name</translation>
    </message>
    <message>
        <source>文件类型不能用作文件后缀</source>
        <translation>the file type cannot be a suffix</translation>
    </message>
</context>
<context>
    <name>HandOverFolder</name>
    <message>
        <source>文件夹已不存在，可能已被移动或删除：
%1</source>
        <translation>The folder is no longer there; it may have been moved or deleted:
%1</translation>
    </message>
    <message>
        <source>系统的文件管理器无法打开文件夹：
%1</source>
        <translation>The system&apos;s file browser could not open the folder:
%1</translation>
    </message>
</context>
<context>
    <name>HistoryWords</name>
    <message>
        <source>接收客户文件</source>
        <translation>Customer&apos;s files taken in</translation>
    </message>
    <message>
        <source>订单付款</source>
        <translation>Order paid</translation>
    </message>
    <message>
        <source>指派前处理人</source>
        <translation>Pre-processor assigned</translation>
    </message>
    <message>
        <source>重新指派前处理人</source>
        <translation>Pre-processor reassigned</translation>
    </message>
    <message>
        <source>指派审核人</source>
        <translation>Reviewer assigned</translation>
    </message>
    <message>
        <source>重新指派审核人</source>
        <translation>Reviewer reassigned</translation>
    </message>
    <message>
        <source>更改状态</source>
        <translation>Status changed</translation>
    </message>
    <message>
        <source>保存审核结果</source>
        <translation>Verdict recorded</translation>
    </message>
    <message>
        <source>记录时间</source>
        <translation>Time recorded</translation>
    </message>
    <message>
        <source>完成流程</source>
        <translation>Flow finished</translation>
    </message>
    <message>
        <source>导入料号</source>
        <translation>Job imported</translation>
    </message>
    <message>
        <source>导入机器人结果</source>
        <translation>Robot&apos;s result imported</translation>
    </message>
    <message>
        <source>机器人接收料号</source>
        <translation>Taken by the robot</translation>
    </message>
    <message>
        <source>机器人交付结果</source>
        <translation>Result delivered by the robot</translation>
    </message>
    <message>
        <source>修改备注</source>
        <translation>Remark changed</translation>
    </message>
    <message>
        <source>取文件</source>
        <translation>File fetched</translation>
    </message>
    <message>
        <source>删除原始文件</source>
        <translation>Original file deleted</translation>
    </message>
    <message>
        <source>更换原始文件</source>
        <translation>Original file replaced</translation>
    </message>
    <message>
        <source>更换导入文件</source>
        <translation>Imported file replaced</translation>
    </message>
    <message>
        <source>更改问题状态</source>
        <translation>State of a question changed</translation>
    </message>
    <message>
        <source>查看历史</source>
        <translation>Read a history</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>File</translation>
    </message>
    <message>
        <source>指派</source>
        <translation>Assignment</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>问题</source>
        <translation>Question</translation>
    </message>
    <message>
        <source>订单</source>
        <translation>Order</translation>
    </message>
    <message>
        <source>不通过</source>
        <translation>failed</translation>
    </message>
    <message>
        <source>通过</source>
        <translation>passed</translation>
    </message>
    <message>
        <source>未审核</source>
        <translation>not reviewed</translation>
    </message>
    <message>
        <source>已付款</source>
        <translation>paid</translation>
    </message>
    <message>
        <source>未付款</source>
        <translation>unpaid</translation>
    </message>
    <message>
        <source>系统管理</source>
        <translation>administration</translation>
    </message>
    <message>
        <source>%1（被拒绝）</source>
        <translation>%1 (refused)</translation>
    </message>
    <message>
        <source>没有执行</source>
        <translation>was not done</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <translation>%1 → %2</translation>
    </message>
    <message>
        <source>“%1”：%2</source>
        <translation>“%1”: %2</translation>
    </message>
    <message>
        <source>创建问题</source>
        <translation>Question raised</translation>
    </message>
    <message>
        <source>查看问题</source>
        <translation>Question viewed</translation>
    </message>
    <message>
        <source>回复问题</source>
        <translation>Question answered</translation>
    </message>
    <message>
        <source>保存导入的料号</source>
        <translation>Store imported job</translation>
    </message>
    <message>
        <source>更改原始料名</source>
        <translation>Change original name</translation>
    </message>
</context>
<context>
    <name>InstallationCopy</name>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot make the folder %1</translation>
    </message>
    <message>
        <source>来源和目标用的是同一个数据库或同一个文件库</source>
        <translation>Source and target have the same database or the same file store</translation>
    </message>
    <message>
        <source>文件 %1 没有复制：%2</source>
        <translation>The file %1 was not copied: %2</translation>
    </message>
    <message>
        <source>来源的文件库里没有记录中的文件 %1：请先运行 kodms-admin check</source>
        <translation>The source&apos;s file store does not have the recorded file %1: run kodms-admin check first</translation>
    </message>
    <message>
        <source>目标的文件库 %1 不是空的（%2），不会覆盖</source>
        <translation>The target&apos;s file store %1 is not empty (%2); it is never overwritten</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>目标上的内容与来源不同</source>
        <translation>what stands on the target is not what the source has</translation>
    </message>
    <message>
        <source>来源 %1 的数据库版本是 %2，本程序的是 %3：请先用本程序打开来源（例如 kodms-admin status）升级它，或者换用合适的程序版本</source>
        <translation>The source %1 has schema version %2, this program has %3: open the source with this program first (for example kodms-admin status), which upgrades it, or use the program that fits</translation>
    </message>
    <message>
        <source>目标 %1 的数据库版本是 %2，本程序的是 %3：请换一个新的目标</source>
        <translation>The target %1 has schema version %2, this program has %3: choose a new target</translation>
    </message>
    <message>
        <source>目标 %1 已有记录，不会覆盖：请用新建的、空的目标</source>
        <translation>The target %1 has records already and is never overwritten: use a new, empty one</translation>
    </message>
    <message>
        <source>表 %1 在目标上与来源不同（%2 行和 %3 行），没有复制任何记录</source>
        <translation>The table %1 differs between source and target (%2 rows and %3 rows); no record was copied</translation>
    </message>
    <message>
        <source>来源和目标用的是同一个文件库：%1</source>
        <translation>Source and target have the same file store: %1</translation>
    </message>
    <message>
        <source>无法写入 %1：%2</source>
        <translation>Cannot write %1: %2</translation>
    </message>
    <message>
        <source>来源 %1 和目标 %2 是同一个数据库</source>
        <translation>The source %1 and the target %2 are one database</translation>
    </message>
    <message>
        <source>复制没有完成：%1</source>
        <translation>The copy did not come to its end: %1</translation>
    </message>
    <message>
        <source>来源的文件库：%1</source>
        <translation>in the file store of the source: %1</translation>
    </message>
    <message>
        <source>目标的文件库：%1</source>
        <translation>in the file store of the target: %1</translation>
    </message>
</context>
<context>
    <name>InstallationSetup</name>
    <message>
        <source>服务正在运行，不能在此时初始化</source>
        <translation>The services are running; an installation cannot be made now</translation>
    </message>
    <message>
        <source>文件夹 %1 不是空的</source>
        <translation>The folder %1 is not empty</translation>
    </message>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot make the folder %1</translation>
    </message>
    <message>
        <source>已有数据库 %1，不会覆盖</source>
        <translation>There is a database %1 already; it is not overwritten</translation>
    </message>
    <message>
        <source>文件库 %1 不是空的，请先恢复数据库备份或换一个位置</source>
        <translation>The file store %1 is not empty; restore a backup of its database first, or choose another place</translation>
    </message>
    <message>
        <source>无法写入 %1：%2</source>
        <translation>Cannot write %1: %2</translation>
    </message>
    <message>
        <source>无法读取 %1：%2</source>
        <translation>Cannot read %1: %2</translation>
    </message>
    <message>
        <source>%1 中的一行无法识别</source>
        <translation>A line of %1 is not understood</translation>
    </message>
    <message>
        <source>没有数据库 %1，账户 %2 也不能在服务器上新建它（%3）：请先由服务器的管理员新建</source>
        <translation>There is no database %1, and the account %2 cannot make it on the server (%3): have the server&apos;s administrator make it first</translation>
    </message>
    <message>
        <source>无法创建数据库：%1</source>
        <translation>Cannot make the database: %1</translation>
    </message>
</context>
<context>
    <name>Intake</name>
    <message>
        <source>接收 %1</source>
        <translation>Taking in %1</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>该账号已停用</source>
        <translation>the account is disabled</translation>
    </message>
    <message>
        <source>您没有接收文件的权限</source>
        <translation>You do not have the right to take in files</translation>
    </message>
    <message>
        <source>客户代码须为三位字母或数字：%1</source>
        <translation>A customer code is three letters or digits: %1</translation>
    </message>
    <message>
        <source>客户 %1 的序号已用完</source>
        <translation>Customer %1 has no serial number left</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1：含有换行或其他控制字符</source>
        <translation>%1: contains a line break or another control character</translation>
    </message>
    <message>
        <source>客户名称</source>
        <translation>Customer name</translation>
    </message>
    <message>
        <source>原始料名</source>
        <translation>Original name</translation>
    </message>
    <message>
        <source>文件说明</source>
        <translation>File description</translation>
    </message>
    <message>
        <source>来源备注</source>
        <translation>Source remark</translation>
    </message>
    <message>
        <source>内部错误，未接收</source>
        <translation>Internal error, not taken in</translation>
    </message>
</context>
<context>
    <name>JobHistory</name>
    <message>
        <source>该料号不在您的范围内</source>
        <translation>this job is not in your scope</translation>
    </message>
    <message>
        <source>无法查看该料号的历史</source>
        <translation>the history of this job cannot be read</translation>
    </message>
</context>
<context>
    <name>JobImport</name>
    <message>
        <source>文件超过 %1 字节</source>
        <translation>The file has more than %1 bytes</translation>
    </message>
    <message>
        <source>kos格式无需导入</source>
        <translation>The kos format needs no import</translation>
    </message>
    <message>
        <source>文件在读取后被修改，请重新选择</source>
        <translation>The file was changed after it was read; please choose it again</translation>
    </message>
    <message>
        <source>这是链接，请选择它所指的文件或文件夹</source>
        <translation>This is a link; please choose the file or folder that it leads to</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::AboutBox</name>
    <message>
        <source>版本</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>数据库</source>
        <translation>Database</translation>
    </message>
    <message>
        <source>数据库结构版本</source>
        <translation>Schema version</translation>
    </message>
    <message>
        <source>文件库</source>
        <translation>File store</translation>
    </message>
    <message>
        <source>配置文件</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>关于 KODMS</source>
        <translation>About KODMS</translation>
    </message>
    <message>
        <source>KODMS 料号管理</source>
        <translation>KODMS Job Management</translation>
    </message>
    <message>
        <source>KODMS 按 Apache License 2.0 发布。</source>
        <translation>KODMS is released under the Apache License 2.0.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>搜索索引</source>
        <translation>Search index</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::CamRelay</name>
    <message>
        <source>料号 %1 已备好，供 CAM 导入：%2</source>
        <translation>Job %1 is ready for import by the CAM system: %2</translation>
    </message>
    <message>
        <source>料号 %1 已备好，供 CAM 读入：%2</source>
        <translation>Job %1 is ready to be read by the CAM system: %2</translation>
    </message>
    <message>
        <source>请求 CAM 导出料号 %1（编号 %2）</source>
        <translation>The CAM system is asked to export job %1 (no. %2)</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::ChangesField</name>
    <message>
        <source>其他人或另一台工作台更改了记录，刷新后可见 (F5)</source>
        <translation>Somebody else, or another desk, has changed records; a refresh shows them (F5)</translation>
    </message>
    <message numerus="yes">
        <source>%n 项他人更改 - 刷新 (F5)</source>
        <translation>
            <numerusform>%n change by others - refresh (F5)</numerusform>
            <numerusform>%n changes by others - refresh (F5)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>KODMS::Host::DeskTabs</name>
    <message>
        <source>料号流程</source>
        <translation>Job flows</translation>
    </message>
    <message>
        <source>原始文件</source>
        <translation>Original files</translation>
    </message>
    <message>
        <source>工作台</source>
        <translation>desks</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::DropZone</name>
    <message>
        <source>选择文件…</source>
        <translation>Choose file...</translation>
    </message>
    <message>
        <source>选择文件夹…</source>
        <translation>Choose folder...</translation>
    </message>
    <message>
        <source>把客户的压缩包或文件夹拖到这里</source>
        <translation>Drop the customer&apos;s archive or folder here</translation>
    </message>
    <message>
        <source>文件夹</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>选择客户的压缩包</source>
        <translation>Choose the customer&apos;s archive</translation>
    </message>
    <message>
        <source>压缩包 (*.zip *.rar *.tgz *.gz *.tar *.7z *.kos);;所有文件 (*)</source>
        <translation>Archives (*.zip *.rar *.tgz *.gz *.tar *.7z *.kos);;All files (*)</translation>
    </message>
    <message>
        <source>选择客户的文件夹</source>
        <translation>Choose the customer&apos;s folder</translation>
    </message>
    <message>
        <source>一次只能接收一个文件或文件夹</source>
        <translation>Only one file or folder can be taken in at a time</translation>
    </message>
    <message>
        <source>只能接收本机上的文件或文件夹</source>
        <translation>Only files and folders of this computer can be taken in</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::HandOverLog</name>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>读入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>料号</source>
        <translation>Job</translation>
    </message>
    <message>
        <source>路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>编号 %1</source>
        <translation>No. %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::HandOverPanel</name>
    <message>
        <source>CAM 交接</source>
        <translation>CAM side</translation>
    </message>
    <message>
        <source>打开文件夹(&amp;O)</source>
        <translation>&amp;Open folder</translation>
    </message>
    <message>
        <source>复制(&amp;C)</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>打开文件夹</source>
        <translation>Open folder</translation>
    </message>
    <message>
        <source>在系统的文件管理器中打开所选料号的文件夹</source>
        <translation>Opens the selected job&apos;s folder in the system&apos;s file browser</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>复制所选的行；没有选择时复制全部</source>
        <translation>Copies the selected rows, or all when none is selected</translation>
    </message>
    <message>
        <source>收起</source>
        <translation>Hide</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::HistoryLog</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>人员</source>
        <translation>Who</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>What</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Details</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::HistoryPanel</name>
    <message>
        <source>料号历史</source>
        <translation>Job history</translation>
    </message>
    <message>
        <source>更早的记录</source>
        <translation>Older entries</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>复制所选的行；没有选择时复制全部</source>
        <translation>Copies the selected rows, or all when none is selected</translation>
    </message>
    <message>
        <source>收起</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>料号历史：请选择一个料号</source>
        <translation>Job history: select a job</translation>
    </message>
    <message>
        <source>料号历史：%1</source>
        <translation>Job history: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::IntakeDialog</name>
    <message>
        <source>接收客户文件</source>
        <translation>Take in customer files</translation>
    </message>
    <message>
        <source>接收</source>
        <translation>Take in</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::IntakeForm</name>
    <message>
        <source>三位字母或数字</source>
        <translation>three letters or digits</translation>
    </message>
    <message>
        <source>新客户的名称</source>
        <translation>name of a new customer</translation>
    </message>
    <message>
        <source>默认取文件名</source>
        <translation>taken from the file name</translation>
    </message>
    <message>
        <source>可不填</source>
        <translation>optional</translation>
    </message>
    <message>
        <source>订单已付款</source>
        <translation>The order is paid</translation>
    </message>
    <message>
        <source>只有网站料号（客户代码 web）在付款前不能下载</source>
        <translation>Only web jobs (customer code web) cannot be downloaded before they are paid</translation>
    </message>
    <message>
        <source>客户代码(&amp;C)</source>
        <translation>&amp;Customer code</translation>
    </message>
    <message>
        <source>客户名称(&amp;N)</source>
        <translation>Customer &amp;name</translation>
    </message>
    <message>
        <source>原始料名(&amp;O)</source>
        <translation>&amp;Original name</translation>
    </message>
    <message>
        <source>文件说明(&amp;D)</source>
        <translation>&amp;Description</translation>
    </message>
    <message>
        <source>来源备注(&amp;R)</source>
        <translation>Source &amp;remark</translation>
    </message>
    <message>
        <source>请先选择客户的压缩包或文件夹</source>
        <translation>Choose the customer&apos;s archive or folder first</translation>
    </message>
    <message>
        <source>所选的文件或文件夹已不存在</source>
        <translation>The chosen file or folder is no longer there</translation>
    </message>
    <message>
        <source>客户代码是三位字母或数字</source>
        <translation>A customer code is three letters or digits</translation>
    </message>
    <message>
        <source>这是新客户，请填写客户名称</source>
        <translation>This customer is new: enter the name</translation>
    </message>
    <message>
        <source>请填写原始料名</source>
        <translation>Enter the original name</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::IntakeReceiptPage</name>
    <message>
        <source>接收完成，新料号是</source>
        <translation>Taken in as job</translation>
    </message>
    <message>
        <source>复制料号</source>
        <translation>Copy job name</translation>
    </message>
    <message>
        <source>再接收一个</source>
        <translation>Take in another</translation>
    </message>
    <message>
        <source>原始料名：%1</source>
        <translation>Original name: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::MainWindow</name>
    <message>
        <source>KODMS 料号管理 - %1</source>
        <translation>KODMS Job Management - %1</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>下次启动时使用所选的语言。</source>
        <translation>The language is used from the next start on.</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::NoticeLog</name>
    <message>
        <source>信息</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>级别</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Text</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::NoticePanel</name>
    <message>
        <source>通知</source>
        <translation>Notices</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>复制所选通知；没有选择时复制全部</source>
        <translation>Copy the selected notices, or all when none is selected</translation>
    </message>
    <message>
        <source>清空</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>收起</source>
        <translation>Hide</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::OutageField</name>
    <message>
        <source>数据库暂时无法读取</source>
        <translation>The database cannot be read</translation>
    </message>
    <message>
        <source>会自动重试；刷新 (F5) 会立即重试</source>
        <translation>Tried again by itself from time to time; refreshing (F5) tries at once</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::SampleBanner</name>
    <message>
        <source>示例安装：这里的料号、客户和账号都是虚构的，仅供试用</source>
        <translation>Sample installation: jobs, customers and accounts are made up, for trying things</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::ShortcutsBox</name>
    <message>
        <source>列出所选料号的问题</source>
        <translation>List the questions of the selected job</translation>
    </message>
    <message>
        <source>修改备注</source>
        <translation>Edit the remark</translation>
    </message>
    <message>
        <source>表格中按 F2</source>
        <translation>F2, in a table</translation>
    </message>
    <message>
        <source>右键菜单（复制）</source>
        <translation>Context menu (copy)</translation>
    </message>
    <message>
        <source>表格中按菜单键</source>
        <translation>menu key, in a table</translation>
    </message>
    <message>
        <source>下一个、上一个控件</source>
        <translation>Next and previous control</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Shortcuts</translation>
    </message>
    <message>
        <source>表格中按回车</source>
        <translation>Enter, in a table</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::SignInWindow</name>
    <message>
        <source>演示账号和密码见文件：
%1</source>
        <translation>The demo accounts and their passwords stand in:
%1</translation>
    </message>
    <message>
        <source>登录 - KODMS</source>
        <translation>Sign in - KODMS</translation>
    </message>
    <message>
        <source>登录名</source>
        <translation>Login</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>登录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>KODMS 料号管理</source>
        <translation>KODMS Job Management</translation>
    </message>
    <message>
        <source>数据库：%1</source>
        <translation>Database: %1</translation>
    </message>
    <message>
        <source>请输入登录名和密码</source>
        <translation>Enter login and password</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::StartFailureWindow</name>
    <message>
        <source>KODMS 无法启动</source>
        <translation>KODMS cannot start</translation>
    </message>
    <message>
        <source>配置文件：%1</source>
        <translation>Configuration: %1</translation>
    </message>
    <message>
        <source>没有改动任何数据。按上面的说明处理后重新启动；需要帮助时，请复制这些内容交给管理员。</source>
        <translation>No data was changed. Do what is said above and start again; if you need help, copy this text for your administrator.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
</context>
<context>
    <name>KODMS::Host::StatusFields</name>
    <message>
        <source>普通用户</source>
        <translation>ordinary user</translation>
    </message>
    <message>
        <source>、</source>
        <comment>between the names of roles</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>打开通知列表 (F8)</source>
        <translation>Open the list of notices (F8)</translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message>
        <source>登录名：%1
角色：%2</source>
        <translation>Login: %1
Roles: %2</translation>
    </message>
    <message>
        <source>管理员</source>
        <translation>administrator</translation>
    </message>
    <message>
        <source>前处理</source>
        <translation>pre-processing</translation>
    </message>
    <message>
        <source>审核指派</source>
        <translation>review assignment</translation>
    </message>
    <message>
        <source>测试管理员</source>
        <translation>test administrator</translation>
    </message>
    <message>
        <source>审核</source>
        <translation>review</translation>
    </message>
    <message>
        <source>原始文件更新</source>
        <translation>original files</translation>
    </message>
    <message>
        <source>原始文件指派</source>
        <translation>file assignment</translation>
    </message>
    <message>
        <source>显示客户名称</source>
        <translation>customer names</translation>
    </message>
    <message>
        <source>机器人</source>
        <translation>robot</translation>
    </message>
    <message>
        <source>通知 (%1)</source>
        <translation>Notices (%1)</translation>
    </message>
    <message>
        <source>通知</source>
        <translation>Notices</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::AnswerForm</name>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>描述与历史</source>
        <translation>Description and history</translation>
    </message>
    <message>
        <source>回复</source>
        <translation>Answer</translation>
    </message>
    <message>
        <source>提交后的状态</source>
        <translation>State after submitting</translation>
    </message>
    <message>
        <source>回复(&amp;A)</source>
        <translation>&amp;Answer</translation>
    </message>
    <message>
        <source>状态(&amp;T)</source>
        <translation>S&amp;tate</translation>
    </message>
    <message>
        <source>提交回复(&amp;S)</source>
        <translation>&amp;Submit answer</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>料号：%1</source>
        <translation>Job: %1</translation>
    </message>
    <message>
        <source>没有可以查看的问题</source>
        <translation>There is no question to view</translation>
    </message>
    <message>
        <source>（未知）</source>
        <translation>(unknown)</translation>
    </message>
    <message>
        <source>状态改为</source>
        <translation>set the state to</translation>
    </message>
    <message>
        <source>提出</source>
        <translation>raised</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::AnswerSession</name>
    <message>
        <source>未读取</source>
        <translation>Not read</translation>
    </message>
    <message>
        <source>读取图片</source>
        <translation>Read pictures</translation>
    </message>
    <message>
        <source>对“%1”的回复尚未提交，放弃并转到“%2”？</source>
        <translation>Your answer to “%1” is not submitted yet. Drop it and go to “%2”?</translation>
    </message>
    <message>
        <source>图片 %1：%2</source>
        <translation>Picture %1: %2</translation>
    </message>
    <message>
        <source>已提交</source>
        <translation>Submitted</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ArchiveLimits</name>
    <message>
        <source>条目超过 %1 个</source>
        <translation>more than %1 entries</translation>
    </message>
    <message>
        <source>解压后超过 %1 字节</source>
        <translation>more than %1 bytes when unpacked</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ArchiveReader</name>
    <message>
        <source>不是可识别的压缩包（zip、rar、tgz、tar、7z）：%1</source>
        <translation>Not a known archive (zip, rar, tgz, tar, 7z): %1</translation>
    </message>
    <message>
        <source>无法读取文件：%1</source>
        <translation>Cannot read the file: %1</translation>
    </message>
    <message>
        <source>压缩包已损坏：%1</source>
        <translation>The archive is damaged: %1</translation>
    </message>
    <message>
        <source>压缩包已损坏：%1，条目 %2</source>
        <translation>The archive is damaged: %1, entry %2</translation>
    </message>
    <message>
        <source>压缩包已加密，请提供未加密的压缩包：%1</source>
        <translation>The archive is encrypted; an open one is needed: %1</translation>
    </message>
    <message>
        <source>压缩包中有无法识别的条目名称：%1</source>
        <translation>The archive has an entry whose name cannot be read: %1</translation>
    </message>
    <message>
        <source>此 rar 压缩包用了不受支持的压缩方式（例如固实压缩），请提供 zip 或 tgz 压缩包：%1</source>
        <translation>This rar archive uses a kind of compression that is not supported (solid, for example); please provide a zip or tgz archive: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ArchiveWalk</name>
    <message>
        <source>不是文件或文件夹</source>
        <translation>neither file nor folder</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::EntryPath</name>
    <message>
        <source>压缩包中的条目被拒绝：%1（%2）</source>
        <translation>An entry of the archive is refused: %1 (%2)</translation>
    </message>
    <message>
        <source>绝对路径</source>
        <translation>absolute path</translation>
    </message>
    <message>
        <source>路径超出目标文件夹</source>
        <translation>the path leaves the target folder</translation>
    </message>
    <message>
        <source>路径过长</source>
        <translation>the path is too long</translation>
    </message>
    <message>
        <source>没有名称</source>
        <translation>no name</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::FileStore</name>
    <message>
        <source>本程序没有此种文件库：%1</source>
        <translation>This program has no such kind of file store: %1</translation>
    </message>
    <message>
        <source>不能用作文件库中的名称：%1</source>
        <translation>Cannot be a name in the file store: %1</translation>
    </message>
    <message>
        <source>文件库中已有此文件：%1</source>
        <translation>The file store has this file already: %1</translation>
    </message>
    <message>
        <source>文件库中没有文件：%1</source>
        <translation>The file store has no file %1</translation>
    </message>
    <message>
        <source>文件在存入时被修改：%1</source>
        <translation>The file was changed while it was stored: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::FolderPacker</name>
    <message>
        <source>文件夹中没有文件：%1</source>
        <translation>There is no file in the folder: %1</translation>
    </message>
    <message>
        <source>不能打包链接或特殊文件：%1</source>
        <translation>Links and special files cannot be packed: %1</translation>
    </message>
    <message>
        <source>文件在打包时被修改：%1</source>
        <translation>The file was changed while it was packed: %1</translation>
    </message>
    <message>
        <source>文件名无法识别：%1</source>
        <translation>The file name cannot be read: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::FolderStore</name>
    <message>
        <source>文件夹 %1</source>
        <translation>Folder %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::GridFsStore</name>
    <message>
        <source>无法连接文件服务器 %1</source>
        <translation>The file server %1 cannot be reached</translation>
    </message>
    <message>
        <source>文件服务器 %1 拒绝访问：请检查用户、密码和权限</source>
        <translation>The file server %1 refuses access: check user, password and rights</translation>
    </message>
    <message>
        <source>文件服务器 %1 磁盘空间不足</source>
        <translation>The disk of the file server %1 is full</translation>
    </message>
    <message>
        <source>文件服务器 %1 报告错误</source>
        <translation>The file server %1 reports an error</translation>
    </message>
    <message>
        <source>另一个程序正在存入此文件，或在存入时被终止（两分钟后可再试）：%1</source>
        <translation>Another program is storing this file, or was killed while it did (try again in two minutes): %1</translation>
    </message>
    <message>
        <source>存入时间断过久，已被清理，请再试：%1</source>
        <translation>Storing was held up for too long and has been swept, please try again: %1</translation>
    </message>
    <message>
        <source>文件过大，无法存入文件服务器：%1</source>
        <translation>Too large for the file server: %1</translation>
    </message>
    <message>
        <source>[fileStore] uri 不是有效的地址，应为 mongodb://主机:端口；用户名和密码中的特殊字符须写作 %XX</source>
        <translation>[fileStore] uri is no valid address; expected mongodb://host:port, with special characters in user and password written as %XX</translation>
    </message>
    <message>
        <source>[fileStore] passwordFile 需要 uri 中有用户名</source>
        <translation>[fileStore] passwordFile needs a user name in uri</translation>
    </message>
    <message>
        <source>密码文件是空的：%1</source>
        <translation>The password file is empty: %1</translation>
    </message>
    <message>
        <source>文件服务器 %1，库 %2，桶 %3</source>
        <translation>File server %1, database %2, bucket %3</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::HashedStream</name>
    <message>
        <source>文件库中的文件已损坏，与存入时不同：%1</source>
        <translation>The stored file is damaged, it differs from what was stored: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ImportDropArea</name>
    <message>
        <source>选择文件(&amp;F)…</source>
        <translation>Choose a &amp;file…</translation>
    </message>
    <message>
        <source>选择文件夹(&amp;D)…</source>
        <translation>Choose a fol&amp;der…</translation>
    </message>
    <message>
        <source>把 ODB++ 压缩包或文件夹拖到这里</source>
        <translation>Drop an ODB++ archive or folder here</translation>
    </message>
    <message>
        <source>选择 ODB++ 压缩包</source>
        <translation>Choose an ODB++ archive</translation>
    </message>
    <message>
        <source>压缩包 (*.tgz *.gz *.zip *.tar *.7z *.rar);;所有文件 (*)</source>
        <translation>Archives (*.tgz *.gz *.zip *.tar *.7z *.rar);;All files (*)</translation>
    </message>
    <message>
        <source>选择 ODB++ 文件夹</source>
        <translation>Choose an ODB++ folder</translation>
    </message>
    <message>
        <source>一次只能导入一个文件或文件夹</source>
        <translation>Only one file or folder can be imported at a time</translation>
    </message>
    <message>
        <source>只能导入本机上的文件或文件夹</source>
        <translation>Only files and folders of this computer can be imported</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ImportForm</name>
    <message>
        <source>导入机器人结果</source>
        <translation>Import the robot&apos;s result</translation>
    </message>
    <message>
        <source>导入料号</source>
        <translation>Import a job</translation>
    </message>
    <message>
        <source>导入(&amp;I)</source>
        <translation>&amp;Import</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1：%2（原始料名 %3）</source>
        <translation>%1: %2 (original job name %3)</translation>
    </message>
    <message>
        <source>料名</source>
        <translation>Job name</translation>
    </message>
    <message>
        <source>步骤</source>
        <translation>Steps</translation>
    </message>
    <message>
        <source>层数</source>
        <translation>Layers</translation>
    </message>
    <message>
        <source>%1（矩阵 %2 行）</source>
        <translation>%1 (%2 rows in the matrix)</translation>
    </message>
    <message>
        <source>各类型层</source>
        <translation>Layers by type</translation>
    </message>
    <message>
        <source>特征数</source>
        <translation>Features</translation>
    </message>
    <message>
        <source>大小</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>%1，%2 个文件</source>
        <translation>%1, %2 files</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::ImportSession</name>
    <message>
        <source>正在导入 %1，完成前不能转到 %2</source>
        <translation>%1 is being imported; the window cannot move to %2 before that is done</translation>
    </message>
    <message>
        <source>为 %1 选择的 %2 尚未导入，放弃并转到 %3？</source>
        <translation>%2, chosen for %1, has not been imported. Drop it and move to %3?</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>读取 %1</source>
        <translation>Reading %1</translation>
    </message>
    <message>
        <source>窗口已关闭，未导入</source>
        <translation>The window was closed; nothing was imported</translation>
    </message>
    <message>
        <source>未导入</source>
        <translation>Not imported</translation>
    </message>
    <message>
        <source>导入 %1</source>
        <translation>Importing %1</translation>
    </message>
    <message>
        <source>导入 %1：%2</source>
        <translation>Import of %1: %2</translation>
    </message>
    <message>
        <source>相同的内容已由 %1 于 %2 导入过，仍要再次导入吗？</source>
        <translation>%1 imported the same content at %2. Import it again?</translation>
    </message>
    <message>
        <source>已为 %1 导入 %2：%3 层，%4 个特征</source>
        <translation>Imported %2 for %1: %3 layers, %4 features</translation>
    </message>
    <message>
        <source>相同的内容已由 %1 于 %2 为 %3 导入过，仍要为 %4 导入吗？</source>
        <translation>%1 imported the same content at %2 for %3. Import it for %4?</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::IntakeFile</name>
    <message>
        <source>没有指定文件或文件夹</source>
        <translation>No file or folder is given</translation>
    </message>
    <message>
        <source>这是链接，请指定它所指的文件或文件夹：%1</source>
        <translation>This is a link; give the file or folder that it leads to: %1</translation>
    </message>
    <message>
        <source>不是文件或文件夹：%1</source>
        <translation>Neither file nor folder: %1</translation>
    </message>
    <message>
        <source>文件是空的：%1</source>
        <translation>The file is empty: %1</translation>
    </message>
    <message>
        <source>压缩包中没有文件：%1</source>
        <translation>There is no file in the archive: %1</translation>
    </message>
    <message>
        <source>文件超过 %1 字节：%2</source>
        <translation>The file has more than %1 bytes: %2</translation>
    </message>
    <message>
        <source>不是可识别的压缩包（zip、rar、tgz、tar、7z、kos）：%1</source>
        <translation>Not a known archive (zip, rar, tgz, tar, 7z, kos): %1</translation>
    </message>
    <message>
        <source>文件在接收时被修改：%1</source>
        <translation>The file was changed while it was taken in: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::IoFailure</name>
    <message>
        <source>磁盘空间不足：%1</source>
        <translation>Not enough space on the disk: %1</translation>
    </message>
    <message>
        <source>没有权限：%1</source>
        <translation>No permission: %1</translation>
    </message>
    <message>
        <source>文件不存在：%1</source>
        <translation>The file does not exist: %1</translation>
    </message>
    <message>
        <source>路径过长：%1</source>
        <translation>The path is too long: %1</translation>
    </message>
    <message>
        <source>应为文件，却是文件夹：%1</source>
        <translation>A folder, where a file should be: %1</translation>
    </message>
    <message>
        <source>应为文件夹，却是文件：%1</source>
        <translation>A file, where a folder should be: %1</translation>
    </message>
    <message>
        <source>文件读写失败：%1</source>
        <translation>Reading or writing failed: %1</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>文件正被其他程序使用：%1</source>
        <translation>Another program is using the file: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::LinkPlan</name>
    <message>
        <source>链接不指向压缩包中的文件</source>
        <translation>the link does not lead to a file of the archive</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::LiveChanges</name>
    <message>
        <source>数据库恢复可用</source>
        <translation>The database is available again</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::PathClashes</name>
    <message>
        <source>与另一条目 %1 冲突</source>
        <translation>clashes with the entry %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::PictureStrip</name>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::PlacedStore</name>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::QuestionSession</name>
    <message>
        <source>正在处理，完成前不能转到其他料号或问题</source>
        <translation>Still working: the window cannot turn to another job or question before that ends</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::RaiseForm</name>
    <message>
        <source>标题</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>描述</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>标题(&amp;T)</source>
        <translation>&amp;Title</translation>
    </message>
    <message>
        <source>一句话说明问题</source>
        <translation>The question in one sentence</translation>
    </message>
    <message>
        <source>描述(&amp;D)</source>
        <translation>&amp;Description</translation>
    </message>
    <message>
        <source>哪一层、什么位置、应当怎样；可直接粘贴截图</source>
        <translation>Which layer, which place, what is expected; screenshots can be pasted here</translation>
    </message>
    <message>
        <source>添加图片(&amp;A)…</source>
        <translation>&amp;Add pictures…</translation>
    </message>
    <message>
        <source>粘贴图片(&amp;V)</source>
        <translation>Paste pict&amp;ure</translation>
    </message>
    <message>
        <source>移除(&amp;R)</source>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>图片(&amp;P)</source>
        <translation>&amp;Pictures</translation>
    </message>
    <message>
        <source>拖到这里，或粘贴</source>
        <translation>drop them here, or paste</translation>
    </message>
    <message>
        <source>剪贴板中没有图片</source>
        <translation>There is no picture in the clipboard</translation>
    </message>
    <message>
        <source>创建问题(&amp;S)</source>
        <translation>Raise que&amp;stion</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>选择图片</source>
        <translation>Choose pictures</translation>
    </message>
    <message>
        <source>图片 (*.png *.jpg *.jpeg *.bmp *.gif *.webp);;所有文件 (*)</source>
        <translation>Pictures (*.png *.jpg *.jpeg *.bmp *.gif *.webp);;All files (*)</translation>
    </message>
    <message>
        <source>料号：%1</source>
        <translation>Job: %1</translation>
    </message>
    <message>
        <source>没有可以提问的料号</source>
        <translation>There is no job to raise a question on</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::RaiseSession</name>
    <message>
        <source>服务尚未启动</source>
        <translation>The services are not running</translation>
    </message>
    <message>
        <source>为 %1 填写的问题尚未保存，放弃并转到 %2？</source>
        <translation>The question written for %1 is not stored yet. Drop it and go to %2?</translation>
    </message>
    <message>
        <source>只能使用本机上的图片</source>
        <translation>Only pictures on this machine can be used</translation>
    </message>
    <message>
        <source>粘贴的图片 %1.png</source>
        <translation>pasted picture %1.png</translation>
    </message>
    <message>
        <source>图片过多，最多 %1 张</source>
        <translation>Too many pictures, at most %1</translation>
    </message>
    <message>
        <source>读取图片</source>
        <translation>Read pictures</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>已为 %1 创建问题：%2</source>
        <translation>Raised on %1: %2</translation>
    </message>
    <message>
        <source>请填写标题</source>
        <translation>Please give a title</translation>
    </message>
    <message>
        <source>窗口已关闭，未创建</source>
        <translation>The window was closed, nothing was raised</translation>
    </message>
    <message>
        <source>保存图片</source>
        <translation>Store pictures</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::StoredEntry</name>
    <message>
        <source>文件库中的文件已损坏：%1</source>
        <translation>The stored file is damaged: %1</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::TaskDialog</name>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请稍候</source>
        <translation>Please wait</translation>
    </message>
    <message>
        <source>正在取消…</source>
        <translation>Cancelling...</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1/秒</source>
        <translation>%1/s</translation>
    </message>
    <message>
        <source>%1 行</source>
        <translation>%1 rows</translation>
    </message>
</context>
<context>
    <name>KODMS::Services::TaskRunner</name>
    <message>
        <source>内部错误：%1</source>
        <translation>Internal error: %1</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>已取消：%1。本次操作的其余部分不再进行。</source>
        <translation>Cancelled: %1. The rest of this action is not carried out.</translation>
    </message>
</context>
<context>
    <name>ListExport</name>
    <message>
        <source>查询条件有误，未导出</source>
        <translation>the search cannot be understood; nothing was exported</translation>
    </message>
    <message>
        <source>结果有 %1 行，而工作表只能容纳 %2 行：请缩小筛选范围，或导出为 CSV</source>
        <translation>the result has %1 rows and a worksheet holds %2: narrow the filter, or export as CSV</translation>
    </message>
    <message>
        <source>已导出 %1 行：%2</source>
        <translation>%1 rows exported: %2</translation>
    </message>
    <message>
        <source>导出的文件中有 %1 个单元格超过 32,767 个字符，只保留了开头</source>
        <translation>%1 cells of the exported file were longer than 32,767 characters; only their beginning was kept</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>导出 %1</source>
        <translation>Exporting %1</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>文件(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>接收客户文件(&amp;N)…</source>
        <translation>Take i&amp;n customer files...</translation>
    </message>
    <message>
        <source>切换用户(&amp;U)…</source>
        <translation>Switch &amp;user...</translation>
    </message>
    <message>
        <source>退出(&amp;Q)</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>语言(&amp;L)</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>视图(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>刷新(&amp;R)</source>
        <translation>&amp;Refresh</translation>
    </message>
    <message>
        <source>通知列表(&amp;T)</source>
        <translation>No&amp;tices</translation>
    </message>
    <message>
        <source>高对比度状态列(&amp;H)</source>
        <translation>&amp;High-contrast status column</translation>
    </message>
    <message>
        <source>帮助(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>关于 KODMS(&amp;A)</source>
        <translation>&amp;About KODMS</translation>
    </message>
    <message>
        <source>CAM 交接(&amp;C)</source>
        <translation>&amp;CAM side</translation>
    </message>
    <message>
        <source>导出列表(&amp;E)…</source>
        <translation>&amp;Export list…</translation>
    </message>
    <message>
        <source>料号历史(&amp;J)</source>
        <translation>&amp;Job history</translation>
    </message>
    <message>
        <source>搜索(&amp;S)</source>
        <translation>&amp;Search</translation>
    </message>
    <message>
        <source>料号流程(&amp;1)</source>
        <translation>Job flows (&amp;1)</translation>
    </message>
    <message>
        <source>原始文件(&amp;2)</source>
        <translation>Original files (&amp;2)</translation>
    </message>
    <message>
        <source>快捷键(&amp;K)</source>
        <translation>&amp;Shortcuts</translation>
    </message>
    <message>
        <source>按所在列排序(&amp;O)</source>
        <translation>S&amp;ort by this column</translation>
    </message>
    <message>
        <source>他人更改后自动刷新(&amp;A)</source>
        <translation>Refresh &amp;automatically after changes by others</translation>
    </message>
</context>
<context>
    <name>OdbJob</name>
    <message>
        <source>曲面中不能有记录 %1</source>
        <translation>record %1 does not belong in a surface</translation>
    </message>
    <message>
        <source>轮廓中不能有记录 %1</source>
        <translation>record %1 does not belong in a contour</translation>
    </message>
    <message>
        <source>极性须为 P 或 N：%1</source>
        <translation>the polarity must be P or N: %1</translation>
    </message>
    <message>
        <source>记录缺少字段</source>
        <translation>the record lacks a field</translation>
    </message>
    <message>
        <source>字段无效：%1</source>
        <translation>bad field: %1</translation>
    </message>
    <message>
        <source>数值超出范围：%1</source>
        <translation>number out of range: %1</translation>
    </message>
    <message>
        <source>不是数值：%1</source>
        <translation>not a number: %1</translation>
    </message>
    <message>
        <source>无法识别的记录：%1</source>
        <translation>unknown record: %1</translation>
    </message>
    <message>
        <source>文件不完整，曲面没有结束</source>
        <translation>the file ends within a surface</translation>
    </message>
    <message>
        <source>文件声明 %1 个特征，实际为 %2 个</source>
        <translation>the file declares %1 features and has %2</translation>
    </message>
    <message>
        <source>是链接或特殊文件</source>
        <translation>a link or a special file</translation>
    </message>
    <message>
        <source>解压后过大</source>
        <translation>too large when unpacked</translation>
    </message>
    <message>
        <source>压缩数据已损坏</source>
        <translation>the packed data are damaged</translation>
    </message>
    <message>
        <source>层或步骤过多</source>
        <translation>too many layers or steps</translation>
    </message>
    <message>
        <source>路径过长</source>
        <translation>the path is too long</translation>
    </message>
    <message>
        <source>是链接，不能读取</source>
        <translation>a link, which cannot be read</translation>
    </message>
    <message>
        <source>没有找到 matrix/matrix，不是 ODB++ 料号</source>
        <translation>No matrix/matrix found: this is no ODB++ job</translation>
    </message>
    <message>
        <source>有多个料号：%1 和 %2</source>
        <translation>There is more than one job: %1 and %2</translation>
    </message>
    <message>
        <source>与 %1 重复</source>
        <translation>the same as %1</translation>
    </message>
    <message>
        <source>步骤 %1 没有文件</source>
        <translation>step %1 has no files</translation>
    </message>
    <message>
        <source>该层有两个 features 文件</source>
        <translation>the layer has two features files</translation>
    </message>
    <message>
        <source>特征过多</source>
        <translation>too many features</translation>
    </message>
    <message>
        <source>行过长</source>
        <translation>the line is too long</translation>
    </message>
    <message>
        <source>含有空字符，不是文本</source>
        <translation>a NUL character: this is no text</translation>
    </message>
    <message>
        <source>无法识别：%1</source>
        <translation>cannot be understood: %1</translation>
    </message>
    <message>
        <source>上一条记录没有结束</source>
        <translation>the record before it has not ended</translation>
    </message>
    <message>
        <source>记录超过 %1 条</source>
        <translation>more than %1 records</translation>
    </message>
    <message>
        <source>名称无效：%1</source>
        <translation>bad name: %1</translation>
    </message>
    <message>
        <source>行号无效：%1</source>
        <translation>bad row number: %1</translation>
    </message>
    <message>
        <source>多余的 }</source>
        <translation>a } too many</translation>
    </message>
    <message>
        <source>步骤没有名称</source>
        <translation>a step without a name</translation>
    </message>
    <message>
        <source>步骤重复：%1</source>
        <translation>two steps %1</translation>
    </message>
    <message>
        <source>层没有名称</source>
        <translation>a layer without a name</translation>
    </message>
    <message>
        <source>层 %1 没有类型</source>
        <translation>layer %1 has no type</translation>
    </message>
    <message>
        <source>层 %1 的 CONTEXT 无效：%2</source>
        <translation>layer %1 has a bad CONTEXT: %2</translation>
    </message>
    <message>
        <source>层 %1 的极性无效：%2</source>
        <translation>layer %1 has a bad polarity: %2</translation>
    </message>
    <message>
        <source>层重复：%1</source>
        <translation>two layers %1</translation>
    </message>
    <message>
        <source>文件不完整，缺少 }</source>
        <translation>the file is cut short: a } is missing</translation>
    </message>
    <message>
        <source>没有步骤</source>
        <translation>no steps</translation>
    </message>
    <message>
        <source>没有层</source>
        <translation>no layers</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 第 %2 行：%3</source>
        <translation>%1 line %2: %3</translation>
    </message>
</context>
<context>
    <name>Orders</name>
    <message>
        <source>料号“%1”没有订单</source>
        <translation>Job &quot;%1&quot; has no order</translation>
    </message>
    <message>
        <source>没有名为“%1”的料号</source>
        <translation>There is no job &quot;%1&quot;</translation>
    </message>
</context>
<context>
    <name>PictureFile</name>
    <message>
        <source>图片过大：%1（%2，最大 %3）</source>
        <translation>The picture is too large: %1 (%2, at most %3)</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1：不是文件</source>
        <translation>%1: not a file</translation>
    </message>
    <message>
        <source>%1：无法读取（%2）</source>
        <translation>%1: cannot be read (%2)</translation>
    </message>
    <message>
        <source>剪贴板中没有可用的图片</source>
        <translation>There is no usable picture in the clipboard</translation>
    </message>
    <message>
        <source>不是可识别的图片（PNG、JPEG、BMP、GIF）</source>
        <translation>Not a picture that can be read (PNG, JPEG, BMP, GIF)</translation>
    </message>
    <message>
        <source>图片已损坏</source>
        <translation>The picture is damaged</translation>
    </message>
    <message>
        <source>图片过大：%1 × %2 像素</source>
        <translation>The picture is too large: %1 × %2 pixels</translation>
    </message>
</context>
<context>
    <name>PostgresServer</name>
    <message>
        <source>密码文件 %1 不存在</source>
        <translation>The password file %1 is not there</translation>
    </message>
    <message>
        <source>密码文件 %1 不能读取：%2</source>
        <translation>The password file %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>密码文件 %1 的第一行是空的，应为密码</source>
        <translation>The first line of the password file %1 is empty; it should be the password</translation>
    </message>
    <message>
        <source>根证书 %1 不能读取（路径中不能有分号）</source>
        <translation>The root certificate %1 cannot be read (its path may have no semicolon)</translation>
    </message>
    <message>
        <source>账户 %1 无权在服务器上新建数据库 %2：请先由服务器的管理员新建</source>
        <translation>The account %1 may not make the database %2 on the server: have the server&apos;s administrator make it first</translation>
    </message>
    <message>
        <source>%1 的版本太旧：需要 PostgreSQL 13 或更新的版本</source>
        <translation>%1 is too old: PostgreSQL 13 or newer is needed</translation>
    </message>
    <message>
        <source>数据库 %1 不能存放记录：它的编码是 %2，排序规则是 %3，字符类型是 %4，区域提供者是 %5；需要编码 UTF8，排序规则 C.UTF-8（或 C），字符类型 C.UTF-8，区域提供者 libc</source>
        <translation>The database %1 cannot hold the records: its encoding is %2, its collation %3, its character type %4, its locale provider %5; encoding UTF8, collation C.UTF-8 (or C), character type C.UTF-8 and locale provider libc are needed</translation>
    </message>
</context>
<context>
    <name>QuestionFiling</name>
    <message>
        <source>无法写入 %1：%2</source>
        <translation>Cannot write %1: %2</translation>
    </message>
</context>
<context>
    <name>QuestionState</name>
    <message>
        <source>未审核</source>
        <translation>Not reviewed</translation>
    </message>
    <message>
        <source>审核未通过</source>
        <translation>Review failed</translation>
    </message>
    <message>
        <source>审核通过</source>
        <translation>Review passed</translation>
    </message>
    <message>
        <source>完成</source>
        <translation>Finished</translation>
    </message>
    <message>
        <source>未知</source>
        <translation>Unknown</translation>
    </message>
</context>
<context>
    <name>QuestionWindow</name>
    <message>
        <source>查看问题</source>
        <translation>View question</translation>
    </message>
    <message>
        <source>创建问题</source>
        <translation>Raise question</translation>
    </message>
</context>
<context>
    <name>RobotWork</name>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
</context>
<context>
    <name>Runtime</name>
    <message>
        <source>服务已在运行：%1</source>
        <translation>The services are running already: %1</translation>
    </message>
    <message>
        <source>尚未初始化（没有数据库 %1）：请先运行 kodms-admin init</source>
        <translation>There is no installation yet (no database %1): run kodms-admin init first</translation>
    </message>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot make the folder %1</translation>
    </message>
    <message>
        <source>无法打开数据库 %1：%2</source>
        <translation>Cannot open the database %1: %2</translation>
    </message>
</context>
<context>
    <name>SampleArchive</name>
    <message>
        <source>无法写入示例文件：%1</source>
        <translation>Cannot write the sample file: %1</translation>
    </message>
</context>
<context>
    <name>SampleData</name>
    <message>
        <source>示例流程数应为 1 到 %1</source>
        <translation>The number of sample flows is 1 to %1</translation>
    </message>
    <message>
        <source>带文件的示例最多 %1 个流程</source>
        <translation>A sample with files has at most %1 flows</translation>
    </message>
    <message>
        <source>此处已有真实数据，不能加入示例数据</source>
        <translation>There are real records here; sample data cannot be added</translation>
    </message>
    <message>
        <source>服务未运行</source>
        <translation>the services are not running</translation>
    </message>
</context>
<context>
    <name>SampleRecords</name>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
</context>
<context>
    <name>SchemaMigrator</name>
    <message>
        <source>数据库不是空的，不能在其中新建：%1</source>
        <translation>The database is not empty; nothing can be made in it: %1</translation>
    </message>
    <message>
        <source>不是本系统的数据库：%1</source>
        <translation>Not a database of this system: %1</translation>
    </message>
    <message>
        <source>数据库版本 %1 比本程序所知的版本 %2 新，请升级本程序：%3</source>
        <translation>The database has version %1, newer than version %2 that this program knows; update this program: %3</translation>
    </message>
    <message>
        <source>复制到 %1 的工作没有完成，还不能使用：请再运行一次 kodms-admin copy</source>
        <translation>The copy into %1 was not finished, so it cannot be used yet: run kodms-admin copy again</translation>
    </message>
    <message>
        <source>数据库 %1 是空的：请先运行 kodms-admin init</source>
        <translation>The database %1 is empty: run kodms-admin init first</translation>
    </message>
</context>
<context>
    <name>SearchIndex</name>
    <message>
        <source>正在读取</source>
        <translation>being read</translation>
    </message>
    <message>
        <source>无法建立，由数据库直接查询</source>
        <translation>could not be made; the database answers searches itself</translation>
    </message>
    <message>
        <source>未启用，由数据库直接查询</source>
        <translation>not in use; the database answers searches itself</translation>
    </message>
    <message>
        <source>%1 个流程，%2 个原始文件，%3 MiB，读取用时 %4 秒</source>
        <translation>%1 flows, %2 original files, %3 MiB, read in %4 s</translation>
    </message>
</context>
<context>
    <name>SignIn</name>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>用户名或密码不正确</source>
        <translation>Login or password is wrong</translation>
    </message>
    <message>
        <source>密码错误次数过多，请在 %1 秒后再试</source>
        <translation>Too many wrong passwords; try again in %1 s</translation>
    </message>
    <message>
        <source>该账号已停用，请联系管理员</source>
        <translation>The account is disabled; ask your administrator</translation>
    </message>
</context>
<context>
    <name>SqlError</name>
    <message>
        <source>数据库正被其他程序占用，请稍后再试</source>
        <translation>the database is in use by another program; try again later</translation>
    </message>
    <message>
        <source>数据不符合要求，未保存</source>
        <translation>the data breaks a rule; nothing was saved</translation>
    </message>
    <message>
        <source>磁盘已满，未保存</source>
        <translation>the disk is full; nothing was saved</translation>
    </message>
    <message>
        <source>数据库为只读，无法保存</source>
        <translation>the database is read-only; nothing was saved</translation>
    </message>
    <message>
        <source>数据库文件已损坏或不是数据库，请从备份恢复</source>
        <translation>the database file is damaged or is no database; restore it from a backup</translation>
    </message>
    <message>
        <source>无法连接数据库</source>
        <translation>no connection to the database</translation>
    </message>
    <message>
        <source>查询超时，已中止</source>
        <translation>the query took too long and was stopped</translation>
    </message>
    <message>
        <source>数据库操作失败</source>
        <translation>the database operation failed</translation>
    </message>
    <message>
        <source>保存时与数据库的连接中断，可能已经保存，请先查看再决定是否重做</source>
        <translation>the connection to the database was lost while saving; it may have been saved: please look before you repeat it</translation>
    </message>
    <message>
        <source>数据库服务器不接受这个账户或它的密码</source>
        <translation>the database server does not accept the account or its password</translation>
    </message>
    <message>
        <source>服务器上没有这个数据库</source>
        <translation>the server has no such database</translation>
    </message>
    <message>
        <source>数据库或它的设置不能使用</source>
        <translation>the database or its settings cannot be used</translation>
    </message>
    <message>
        <source>数据库的账户没有这样做的权限</source>
        <translation>the account of the database has no right to do that</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>StoreCheck</name>
    <message>
        <source>数据库：%1</source>
        <translation>Database: %1</translation>
    </message>
    <message>
        <source>记录已删除，文件有待删除：%1</source>
        <translation>The record is deleted, the file still has to go: %1</translation>
    </message>
    <message>
        <source>文件带有删除标记，但未删除：%1</source>
        <translation>The file is marked for deletion, but was not deleted: %1</translation>
    </message>
    <message>
        <source>文件尚无记录，可能正在登记：%1</source>
        <translation>The file has no record yet; it may be about to get one: %1</translation>
    </message>
    <message>
        <source>没有记录指向此文件：%1</source>
        <translation>No record names this file: %1</translation>
    </message>
    <message>
        <source>文件库中的残留：%1</source>
        <translation>Left over in the file store: %1</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>只有管理员可以检查文件库</source>
        <translation>Only an administrator may check the file store</translation>
    </message>
    <message>
        <source>检查文件库</source>
        <translation>Checking the file store</translation>
    </message>
</context>
<context>
    <name>UserAdmin</name>
    <message>
        <source>您没有该权限</source>
        <translation>you do not have this right</translation>
    </message>
    <message>
        <source>服务尚未启动</source>
        <translation>the services are not running</translation>
    </message>
    <message>
        <source>登录名“%1”无效：应为 1 到 32 个小写字母、数字或 . _ -，以字母或数字开头</source>
        <translation>The login &quot;%1&quot; is not valid: 1 to 32 lower-case letters, digits or . _ -, beginning with a letter or digit</translation>
    </message>
    <message>
        <source>姓名无效：应为 1 到 %1 个可见字符，首尾没有空格</source>
        <translation>The name is not valid: 1 to %1 visible characters, no blank at either end</translation>
    </message>
    <message>
        <source>密码长度应为 %1 到 %2 个字符</source>
        <translation>A password has %1 to %2 characters</translation>
    </message>
    <message>
        <source>没有名为“%1”的角色</source>
        <translation>There is no role &quot;%1&quot;</translation>
    </message>
    <message>
        <source>内存不足，无法生成密码</source>
        <translation>Not enough memory to hash the password</translation>
    </message>
    <message>
        <source>没有登录名为“%1”的用户</source>
        <translation>There is no user &quot;%1&quot;</translation>
    </message>
    <message>
        <source>“%1”是最后一个可用的管理员</source>
        <translation>&quot;%1&quot; is the last enabled administrator</translation>
    </message>
    <message>
        <source>登录名“%1”已被使用</source>
        <translation>The login &quot;%1&quot; is taken</translation>
    </message>
</context>
<context>
    <name>ViewService</name>
    <message>
        <source>数据库未打开，无法查询</source>
        <translation>The database is not open</translation>
    </message>
    <message>
        <source>内部错误</source>
        <translation>internal error</translation>
    </message>
    <message>
        <source>查询失败：%1</source>
        <translation>The search failed: %1</translation>
    </message>
    <message>
        <source>查询条件有误，未执行查询</source>
        <translation>The search conditions are not valid; nothing was searched</translation>
    </message>
</context>
<context>
    <name>XlsxFile</name>
    <message>
        <source>无法写完文件（磁盘空间可能不足）：%1</source>
        <translation>the file could not be written whole (the disk may be full): %1</translation>
    </message>
    <message>
        <source>工作表只能容纳 %1 行</source>
        <translation>a worksheet holds %1 rows only</translation>
    </message>
</context>
</TS>
