<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AsciiCode</name>
    <message>
        <source>ASCII Code Chart</source>
        <translation>ASCII 码表</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>二进制</translation>
    </message>
    <message>
        <source>Decimal</source>
        <translation>十进制</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>Abbr/Glyph</source>
        <translation>缩写/字符</translation>
    </message>
    <message>
        <source>Discription</source>
        <translation>描述</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Terminal for serial ports and simple network links.</source>
        <translation>串口与简单网络连接终端。</translation>
    </message>
    <message>
        <source>document|port</source>
        <translation>文档|端口</translation>
    </message>
    <message>
        <source>A session document (.qvn) to open, or the serial port to start on.</source>
        <translation>要打开的会话文档 (.qvn)，或要启动的串口。</translation>
    </message>
    <message>
        <source>[document|port]</source>
        <translation>[文档|端口]</translation>
    </message>
    <message>
        <source>Try &apos;%1 --help&apos; for more information.</source>
        <translation>请尝试“%1 --help”以获取更多信息。</translation>
    </message>
</context>
<context>
    <name>ConnectionChoices</name>
    <message>
        <source>Custom</source>
        <translation>自定义</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>偶校验</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>奇校验</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>标志校验</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格校验</translation>
    </message>
    <message>
        <source>RTS/CTS</source>
        <translation>RTS/CTS</translation>
    </message>
    <message>
        <source>XON/XOFF</source>
        <translation>XON/XOFF</translation>
    </message>
</context>
<context>
    <name>ControlLinesPanel</name>
    <message>
        <source>Control Lines</source>
        <translation>控制线</translation>
    </message>
    <message>
        <source>DTR</source>
        <translation>DTR</translation>
    </message>
    <message>
        <source>RTS</source>
        <translation>RTS</translation>
    </message>
    <message>
        <source>Send Break</source>
        <translation>发送中断</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> 毫秒</translation>
    </message>
    <message>
        <source>How long a break lasts</source>
        <translation>中断信号持续的时间</translation>
    </message>
    <message>
        <source>CTS</source>
        <translation>CTS</translation>
    </message>
    <message>
        <source>DSR</source>
        <translation>DSR</translation>
    </message>
    <message>
        <source>DCD</source>
        <translation>DCD</translation>
    </message>
    <message>
        <source>RI</source>
        <translation>RI</translation>
    </message>
    <message>
        <source>RTS/CTS flow control drives RTS</source>
        <translation>RTS/CTS 流控制接管 RTS</translation>
    </message>
    <message>
        <source>The device does not report its modem lines</source>
        <translation>该设备不报告其调制解调器线路状态</translation>
    </message>
</context>
<context>
    <name>DataLog</name>
    <message>
        <source>Cannot open log file %1: %2</source>
        <translation>无法打开日志文件 %1：%2</translation>
    </message>
    <message>
        <source>Cannot write log file %1: %2</source>
        <translation>无法写入日志文件 %1：%2</translation>
    </message>
    <message>
        <source>%1 is not a Quorvane log; nothing is written to it</source>
        <translation>%1 不是 Quorvane 日志文件，不会向其写入任何内容</translation>
    </message>
</context>
<context>
    <name>FileSendPanel</name>
    <message>
        <source>Send File...</source>
        <translation>发送文件...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Send File</source>
        <translation>发送文件</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>Sending %1</source>
        <translation>正在发送 %1</translation>
    </message>
    <message>
        <source>%1: %2 of %3 bytes sent</source>
        <translation>%1：已发送 %2 / %3 字节</translation>
    </message>
    <message>
        <source>%1 (cancelled)</source>
        <translation>%1（已取消）</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
</context>
<context>
    <name>FileSender</name>
    <message>
        <source>The connection cannot send</source>
        <translation>连接无法发送</translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Find</source>
        <translation>查找</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>正则表达式</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>区分大小写</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>上一个匹配 (Shift+F3)</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>下一个匹配 (F3)</translation>
    </message>
    <message>
        <source>Close the find bar (Escape)</source>
        <translation>关闭查找栏 (Esc)</translation>
    </message>
    <message>
        <source>No matches</source>
        <translation>无匹配</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>第 %1 个，共 %2 个</translation>
    </message>
    <message numerus="yes">
        <source>%n match(es)</source>
        <translation>
            <numerusform>%n 个匹配</numerusform>
        </translation>
    </message>
    <message>
        <source>Invalid expression</source>
        <translation>无效的表达式</translation>
    </message>
</context>
<context>
    <name>HexInputMarker</name>
    <message>
        <source>1 byte: %1</source>
        <translation>1 字节：%1</translation>
    </message>
    <message>
        <source>%1 bytes: %2</source>
        <translation>%1 字节：%2</translation>
    </message>
</context>
<context>
    <name>HighlightRulesDialog</name>
    <message>
        <source>Highlight Rules</source>
        <translation>高亮规则</translation>
    </message>
    <message>
        <source>Pattern</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>正则表达式</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>区分大小写</translation>
    </message>
    <message>
        <source>Whole line</source>
        <translation>整行</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>颜色</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Colour...</source>
        <translation>颜色...</translation>
    </message>
    <message>
        <source>Rule Colour</source>
        <translation>规则颜色</translation>
    </message>
    <message>
        <source>The pattern &quot;%1&quot; is not a valid regular expression: %2</source>
        <translation>模式“%1”不是有效的正则表达式：%2</translation>
    </message>
</context>
<context>
    <name>MacroBar</name>
    <message>
        <source>Macros...</source>
        <translation>宏...</translation>
    </message>
    <message>
        <source>Add, edit, reorder and remove the macro buttons</source>
        <translation>添加、编辑、排序和删除宏按钮</translation>
    </message>
</context>
<context>
    <name>MacroEditorDialog</name>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Macros</source>
        <translation>宏</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Low byte first</source>
        <translation>低字节在前</translation>
    </message>
    <message>
        <source>High byte first</source>
        <translation>高字节在前</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> 毫秒</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Payload</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Line ending</source>
        <translation>行尾</translation>
    </message>
    <message>
        <source>Checksum</source>
        <translation>校验</translation>
    </message>
    <message>
        <source>Byte order</source>
        <translation>字节序</translation>
    </message>
    <message>
        <source>Repeat every</source>
        <translation>重复周期</translation>
    </message>
    <message>
        <source>Sends</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>Macro %1</source>
        <translation>宏 %1</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Quorvane</source>
        <translation>Quorvane</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>Line Mode</source>
        <translation>行尾模式</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Control</source>
        <translation>控制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>调试</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>New...</source>
        <translation>新建...</translation>
    </message>
    <message>
        <source>Open Settings...</source>
        <translation>打开配置...</translation>
    </message>
    <message>
        <source>Save Settings...</source>
        <translation>保存配置...</translation>
    </message>
    <message>
        <source>Save current config</source>
        <translation>保存当前配置</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Save Settings As...</source>
        <translation>配置另存为...</translation>
    </message>
    <message>
        <source>Save current settings as new file</source>
        <translation>将当前配置另存为新文件</translation>
    </message>
    <message>
        <source>Save Logs...</source>
        <translation>保存日志...</translation>
    </message>
    <message>
        <source>Record message as log file</source>
        <translation>将收发数据记录到日志文件</translation>
    </message>
    <message>
        <source>View Current Data Log</source>
        <translation>查看当前数据日志</translation>
    </message>
    <message>
        <source>Open Log Folder</source>
        <translation>打开日志文件夹</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>退出(&amp;X)</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Clear Send History</source>
        <translation>清空发送历史</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>水平排列</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>垂直排列</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>网格排列</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>自定义排列</translation>
    </message>
    <message>
        <source>Quick Settings...</source>
        <translation>快速设置...</translation>
    </message>
    <message>
        <source>Always On Top</source>
        <translation>窗口置顶</translation>
    </message>
    <message>
        <source>Toolbox...</source>
        <translation>工具箱...</translation>
    </message>
    <message>
        <source>ASCII Code...</source>
        <translation>ASCII 码表...</translation>
    </message>
    <message>
        <source>Options...</source>
        <translation>选项...</translation>
    </message>
    <message>
        <source>Restore Connection</source>
        <translation>恢复连接</translation>
    </message>
    <message>
        <source>Restore Connection when Launch</source>
        <translation>启动时恢复连接</translation>
    </message>
    <message>
        <source>Homepage</source>
        <translation>主页</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>Save Path...</source>
        <translation>保存路径...</translation>
    </message>
    <message>
        <source>Quick Send</source>
        <translation>快速发送</translation>
    </message>
    <message>
        <source>Ctrl+Return</source>
        <translation>Ctrl+Return</translation>
    </message>
    <message>
        <source>New Connection</source>
        <translation>新建连接</translation>
    </message>
    <message>
        <source>New Line</source>
        <translation>换行</translation>
    </message>
    <message>
        <source>Carriage Return</source>
        <translation>回车</translation>
    </message>
    <message>
        <source>LFCR</source>
        <translation>LFCR</translation>
    </message>
    <message>
        <source>LFCR (New Line and Carrage Return)</source>
        <translation>LFCR（换行加回车）</translation>
    </message>
    <message>
        <source>CRLF</source>
        <translation>CRLF</translation>
    </message>
    <message>
        <source>Carrage Return and New Line</source>
        <translation>回车加换行</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>简体中文</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>Set Port Number Per Column</source>
        <translation>设置每列端口数</translation>
    </message>
    <message>
        <source>Port Number Per Column:</source>
        <translation>每列端口数：</translation>
    </message>
    <message>
        <source>Serial Port %1 OPEN FAILED</source>
        <translation>串口 %1 打开失败</translation>
    </message>
    <message>
        <source>Port Number = %1</source>
        <translation>端口数 = %1</translation>
    </message>
    <message>
        <source>The changes will take effect when the program is restarted.</source>
        <translation>更改将在程序重新启动后生效。</translation>
    </message>
    <message>
        <source>The Connection will be restored when launched from next time.</source>
        <translation>下次启动时将恢复连接。</translation>
    </message>
    <message>
        <source>About Quorvane</source>
        <translation>关于 Quorvane</translation>
    </message>
    <message>
        <source>&lt;h3&gt;About Quorvane&lt;/h3&gt;</source>
        <translation>&lt;h3&gt;关于 Quorvane&lt;/h3&gt;</translation>
    </message>
    <message>
        <source>Verstion:</source>
        <translation>版本：</translation>
    </message>
    <message>
        <source>&lt;h4&gt;Provide fully customized software solutions.&lt;/h4&gt;</source>
        <translation>&lt;h4&gt;提供全面定制的软件解决方案。&lt;/h4&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;Contact: support@verdane.example&lt;/p&gt;</source>
        <translation>&lt;p&gt;联系方式：support@verdane.example&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;Copyright (C) VERDANE. All rights reserved.&lt;/p&gt;</source>
        <translation>&lt;p&gt;版权所有 (C) VERDANE。保留所有权利。&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>正在保存...</translation>
    </message>
    <message>
        <source>Save Quorvane</source>
        <translation>保存 Quorvane 会话</translation>
    </message>
    <message>
        <source>File saved</source>
        <translation>文件已保存</translation>
    </message>
    <message>
        <source>Saving FAILED</source>
        <translation>保存失败</translation>
    </message>
    <message>
        <source>The document has been modified.
Do you want to save your changes?</source>
        <translation>文档已被修改。
是否保存更改？</translation>
    </message>
    <message>
        <source>Open Quorvane</source>
        <translation>打开 Quorvane 会话</translation>
    </message>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Ctrl+Shift+S</source>
        <translation>Ctrl+Shift+S</translation>
    </message>
    <message>
        <source>Close Session</source>
        <translation>关闭会话</translation>
    </message>
    <message>
        <source>Close the session that holds the keyboard focus</source>
        <translation>关闭拥有键盘焦点的会话</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Clear Session</source>
        <translation>清空会话</translation>
    </message>
    <message>
        <source>Clear the session that holds the keyboard focus</source>
        <translation>清空拥有键盘焦点的会话</translation>
    </message>
    <message>
        <source>Ctrl+L</source>
        <translation>Ctrl+L</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Quorvane files (*.qvn)</source>
        <translation>Quorvane 文件 (*.qvn)</translation>
    </message>
    <message>
        <source>Click into the session to close first</source>
        <translation>请先点击要关闭的会话</translation>
    </message>
    <message>
        <source>Click into the session to clear first</source>
        <translation>请先点击要清空的会话</translation>
    </message>
    <message>
        <source>%L1 bytes of log text cannot be written and would be lost.
Quit anyway?</source>
        <translation>%L1 字节的日志文本无法写入，退出将会丢失。
仍要退出吗？</translation>
    </message>
    <message>
        <source>%1 is not a Quorvane session document.</source>
        <translation>%1 不是 Quorvane 会话文档。</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>绘图</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>查找...</translation>
    </message>
</context>
<context>
    <name>MultiPortSettingDlg</name>
    <message>
        <source>Option</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Connection %1</source>
        <translation>连接 %1</translation>
    </message>
</context>
<context>
    <name>NewConnection</name>
    <message>
        <source>New Connection</source>
        <translation>新建连接</translation>
    </message>
    <message>
        <source>Serial Port</source>
        <translation>串口</translation>
    </message>
    <message>
        <source>TCP/IP</source>
        <translation>TCP/IP</translation>
    </message>
    <message>
        <source>Bridger</source>
        <translation>桥接</translation>
    </message>
</context>
<context>
    <name>PlotPane</name>
    <message>
        <source>Auto</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>数字</translation>
    </message>
    <message>
        <source>Name:value pairs</source>
        <translation>名称:值 对</translation>
    </message>
    <message>
        <source>How received lines are read as samples</source>
        <translation>如何将接收到的行读取为采样</translation>
    </message>
    <message>
        <source>Sample index</source>
        <translation>采样序号</translation>
    </message>
    <message>
        <source>Receive time (s)</source>
        <translation>接收时间 (秒)</translation>
    </message>
    <message>
        <source>Last </source>
        <translation>最近 </translation>
    </message>
    <message>
        <source> samples</source>
        <translation> 个采样</translation>
    </message>
    <message>
        <source>Samples shown; up to 1,000,000 are kept for export</source>
        <translation>显示的采样数；最多保留 1,000,000 个用于导出</translation>
    </message>
    <message>
        <source>Autoscale</source>
        <translation>自动缩放</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Freeze the curves; samples are still collected</source>
        <translation>冻结曲线；仍继续采集采样</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>绘图</translation>
    </message>
    <message>
        <source>Lines that held no numbers in the chosen format</source>
        <translation>按所选格式未包含数字的行</translation>
    </message>
    <message>
        <source>Reset View</source>
        <translation>重置视图</translation>
    </message>
    <message>
        <source>Clear Plot</source>
        <translation>清除绘图</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>通道</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Colour...</source>
        <translation>颜色...</translation>
    </message>
    <message>
        <source>Export CSV...</source>
        <translation>导出 CSV...</translation>
    </message>
    <message>
        <source>Export PNG...</source>
        <translation>导出 PNG...</translation>
    </message>
    <message>
        <source>Show Under the View</source>
        <translation>显示在视图下方</translation>
    </message>
    <message>
        <source>Hide Plot</source>
        <translation>隐藏绘图</translation>
    </message>
    <message>
        <source>Skipped lines: %1</source>
        <translation>跳过的行：%1</translation>
    </message>
    <message>
        <source>Export Samples</source>
        <translation>导出采样</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV 文件 (*.csv)</translation>
    </message>
    <message>
        <source>Could not write %1: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>Export Plot</source>
        <translation>导出绘图</translation>
    </message>
    <message>
        <source>PNG images (*.png)</source>
        <translation>PNG 图像 (*.png)</translation>
    </message>
    <message>
        <source>Could not write %1.</source>
        <translation>无法写入 %1。</translation>
    </message>
</context>
<context>
    <name>PlotStream</name>
    <message>
        <source>Channel %1</source>
        <translation>通道 %1</translation>
    </message>
</context>
<context>
    <name>ReceiveView</name>
    <message>
        <source>Received data</source>
        <translation>接收数据</translation>
    </message>
</context>
<context>
    <name>ReceiveViewOptions</name>
    <message>
        <source>Hex+ASCII</source>
        <translation>十六进制+ASCII</translation>
    </message>
    <message>
        <source>ANSI Colours</source>
        <translation>ANSI 颜色</translation>
    </message>
    <message>
        <source>Received bytes in rows of 16: offset, hex bytes and their ASCII characters</source>
        <translation>接收的字节每行 16 个：偏移、十六进制字节及其 ASCII 字符</translation>
    </message>
    <message>
        <source>Draw the ANSI colour sequences a device sends as colours, without showing them</source>
        <translation>将设备发送的 ANSI 颜色序列显示为颜色，序列本身不显示</translation>
    </message>
</context>
<context>
    <name>SendBoxController</name>
    <message>
        <source>Enter sends</source>
        <translation>回车发送</translation>
    </message>
    <message>
        <source>Clear after send</source>
        <translation>发送后清空</translation>
    </message>
    <message>
        <source>Enter sends the box and Shift+Enter breaks the line; Ctrl+Enter always sends</source>
        <translation>回车发送输入框内容，Shift+回车换行；Ctrl+回车总是发送</translation>
    </message>
</context>
<context>
    <name>SerialPortWidget</name>
    <message>
        <source>Port Session</source>
        <translation>端口会话</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>Baudrate</source>
        <translation>波特率</translation>
    </message>
    <message>
        <source>Data Bits</source>
        <translation>数据位</translation>
    </message>
    <message>
        <source>Parity</source>
        <translation>校验位</translation>
    </message>
    <message>
        <source>Stop Bits</source>
        <translation>停止位</translation>
    </message>
    <message>
        <source>Flow Type</source>
        <translation>流控</translation>
    </message>
    <message>
        <source>Connections</source>
        <translation>连接列表</translation>
    </message>
    <message>
        <source>Receive</source>
        <translation>接收</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>Auto Feed Line</source>
        <translation>自动换行</translation>
    </message>
    <message>
        <source>Display Send</source>
        <translation>显示发送</translation>
    </message>
    <message>
        <source>Display Time</source>
        <translation>显示时间</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>Loop </source>
        <translation>循环发送 </translation>
    </message>
    <message>
        <source> ms</source>
        <translation> 毫秒</translation>
    </message>
    <message>
        <source>Line by Line</source>
        <translation>逐行发送</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Default (COM2)</source>
        <translation>默认 (COM2)</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Please input correct log file name!</source>
        <translation>请输入正确的日志文件名！</translation>
    </message>
    <message>
        <source>The host was not found. Please check the host name and port settings.</source>
        <translation>未找到主机。请检查主机名和端口设置。</translation>
    </message>
    <message>
        <source>The connection was refused by the peer. Make sure the fortune server is running, and check that the host name and port settings are correct.</source>
        <translation>连接被对方拒绝。请确认服务器正在运行，并检查主机名和端口设置是否正确。</translation>
    </message>
    <message>
        <source>The following error occurred: %1.</source>
        <translation>发生以下错误：%1。</translation>
    </message>
    <message>
        <source>Quorvane</source>
        <translation>Quorvane</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>主机</translation>
    </message>
    <message>
        <source>Local Port</source>
        <translation>本地端口</translation>
    </message>
    <message>
        <source>Dest Port</source>
        <translation>目标端口</translation>
    </message>
    <message>
        <source> IP</source>
        <translation> IP</translation>
    </message>
    <message>
        <source>Dest Host</source>
        <translation>目标主机</translation>
    </message>
    <message>
        <source>Local IP</source>
        <translation>本地 IP</translation>
    </message>
    <message>
        <source>Rx: %L1 Bytes</source>
        <translation>接收：%L1 字节</translation>
    </message>
    <message>
        <source>Tx: %L1 Bytes</source>
        <translation>发送：%L1 字节</translation>
    </message>
    <message>
        <source>Auto Reconnect</source>
        <translation>自动重连</translation>
    </message>
    <message>
        <source>Reopen a lost serial port or TCP connection by itself</source>
        <translation>串口或 TCP 连接断开后自动重新打开</translation>
    </message>
</context>
<context>
    <name>SerialTransport</name>
    <message>
        <source>Serial Port %1 OPEN FAILED! ERROR: </source>
        <translation>串口 %1 打开失败！错误：</translation>
    </message>
    <message>
        <source>Serial Port %1 OPEN SUCCESS</source>
        <translation>串口 %1 打开成功</translation>
    </message>
    <message>
        <source>Serial Port %1 CLOSE FAILED</source>
        <translation>串口 %1 关闭失败</translation>
    </message>
    <message>
        <source>Serial Port %1 CLOSE SUCCESS</source>
        <translation>串口 %1 关闭成功</translation>
    </message>
    <message>
        <source>Serial Port %1 OPEN FAILED: %2</source>
        <translation>串口 %1 打开失败：%2</translation>
    </message>
    <message>
        <source>Serial Port %1 ERROR: %2</source>
        <translation>串口 %1 错误：%2</translation>
    </message>
</context>
<context>
    <name>SessionPlot</name>
    <message>
        <source>Show Plot</source>
        <translation>显示绘图</translation>
    </message>
    <message>
        <source>Plot the numbers this session receives</source>
        <translation>绘制此会话接收到的数字</translation>
    </message>
</context>
<context>
    <name>SessionTitleBar</name>
    <message>
        <source>Double-click to give this session the whole workspace, or to give it back</source>
        <translation>双击让此会话占满工作区，再次双击恢复</translation>
    </message>
    <message>
        <source>Close this session</source>
        <translation>关闭此会话</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>运行中</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
</context>
<context>
    <name>SetConfigFilePathDialog</name>
    <message>
        <source>Quorvane</source>
        <translation>Quorvane</translation>
    </message>
    <message>
        <source>This is the first time that you have run this version of Quorvane. Quorvane needs to set a folder where configuration data can be stored.</source>
        <translation>这是您第一次运行此版本的 Quorvane。Quorvane 需要设置一个用于存储配置数据的文件夹。</translation>
    </message>
    <message>
        <source>Please specify a folder below.</source>
        <translation>请在下方指定一个文件夹。</translation>
    </message>
    <message>
        <source>Pressing Cancel will end the application without setting the configuration folder.</source>
        <translation>按“取消”将退出程序，且不会设置配置文件夹。</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>Baudrate</source>
        <translation>波特率</translation>
    </message>
    <message>
        <source>Data Bits</source>
        <translation>数据位</translation>
    </message>
    <message>
        <source>Parity</source>
        <translation>校验位</translation>
    </message>
    <message>
        <source>Stop Bits</source>
        <translation>停止位</translation>
    </message>
    <message>
        <source>Flow Type</source>
        <translation>流控</translation>
    </message>
    <message>
        <source>Receive</source>
        <translation>接收</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>Auto Feed Line</source>
        <translation>自动换行</translation>
    </message>
    <message>
        <source>Minimal Interval:</source>
        <translation>最小间隔：</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>毫秒</translation>
    </message>
    <message>
        <source>Display Send</source>
        <translation>显示发送</translation>
    </message>
    <message>
        <source>Display Time</source>
        <translation>显示时间</translation>
    </message>
    <message>
        <source>Rx Time Format </source>
        <translation>接收时间格式 </translation>
    </message>
    <message>
        <source>Tx Time Format </source>
        <translation>发送时间格式 </translation>
    </message>
    <message>
        <source>Send</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>Loop </source>
        <translation>循环发送 </translation>
    </message>
    <message>
        <source>Auto add line feed when send (Only valid in text mode)</source>
        <translation>发送时自动添加换行（仅在文本模式下有效）</translation>
    </message>
    <message>
        <source>Comment Support</source>
        <translation>支持注释</translation>
    </message>
    <message>
        <source>Format Send</source>
        <translation>格式化发送</translation>
    </message>
    <message>
        <source>Line Ending Mode</source>
        <translation>行尾模式</translation>
    </message>
    <message>
        <source>CR &amp;&amp; LF (\r\n)</source>
        <translation>回车换行 CR &amp;&amp; LF (\r\n)</translation>
    </message>
    <message>
        <source>Line Feed (\n)</source>
        <translation>换行 LF (\n)</translation>
    </message>
    <message>
        <source>Carriage Return (\r)</source>
        <translation>回车 CR (\r)</translation>
    </message>
    <message>
        <source>LF &amp;&amp; CR (\n\r)</source>
        <translation>换行回车 LF &amp;&amp; CR (\n\r)</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Save Log Message</source>
        <translation>保存日志信息</translation>
    </message>
    <message>
        <source>Log file name </source>
        <translation>日志文件名 </translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Log file name result: </source>
        <translation>生成的日志文件名：</translation>
    </message>
    <message>
        <source>%S - session name; 
%Y - four-digit year; %y - two-digit year; %M - two-digit month; %D - two-digit day of the month;
%h - two-digit hour; %m - two-digit minute; %s - two-digit seconds; %z - three-digit milliseconds </source>
        <translation>%S - 会话名称；
%Y - 四位年份；%y - 两位年份；%M - 两位月份；%D - 两位日期；
%h - 两位小时；%m - 两位分钟；%s - 两位秒数；%z - 三位毫秒数 </translation>
    </message>
    <message>
        <source>Timestamp each line</source>
        <translation>每行添加时间戳</translation>
    </message>
    <message>
        <source>Timestamp</source>
        <translation>时间戳</translation>
    </message>
    <message>
        <source>Timestamp line each hour</source>
        <translation>每小时写入一行时间戳</translation>
    </message>
    <message>
        <source>Start new log at rotate time</source>
        <translation>到达轮换时间时新建日志</translation>
    </message>
    <message>
        <source>HH:mm:ss</source>
        <translation>HH:mm:ss</translation>
    </message>
    <message>
        <source>(must use %D in log file name)</source>
        <translation>（日志文件名中须包含 %D）</translation>
    </message>
    <message>
        <source>Start new log at rotate size</source>
        <translation>达到轮换大小时新建日志</translation>
    </message>
    <message>
        <source>MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>Append to file</source>
        <translation>追加到文件</translation>
    </message>
    <message>
        <source>Overwrite file</source>
        <translation>覆盖文件</translation>
    </message>
    <message>
        <source>Prompt for filename</source>
        <translation>提示输入文件名</translation>
    </message>
    <message>
        <source>Start log upon connect</source>
        <translation>连接时开始记录日志</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Font </source>
        <translation>字体 </translation>
    </message>
    <message>
        <source>Font...</source>
        <translation>字体...</translation>
    </message>
    <message>
        <source>Send Text Color </source>
        <translation>发送文本颜色 </translation>
    </message>
    <message>
        <source>Color...</source>
        <translation>颜色...</translation>
    </message>
    <message>
        <source>Receive Text Color </source>
        <translation>接收文本颜色 </translation>
    </message>
    <message>
        <source>Format Display Color</source>
        <translation>区分收发颜色</translation>
    </message>
    <message>
        <source> Display Buffer Size </source>
        <translation> 显示缓冲区大小 </translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>Local IP</source>
        <translation>本地 IP</translation>
    </message>
    <message>
        <source>Local Port</source>
        <translation>本地端口</translation>
    </message>
    <message>
        <source>Select Log File</source>
        <translation>选择日志文件</translation>
    </message>
    <message>
        <source>Log files (*.log);;All files (*.*);;Text files (*.txt)</source>
        <translation>日志文件 (*.log);;所有文件 (*.*);;文本文件 (*.txt)</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Please input correct log file name!</source>
        <translation>请输入正确的日志文件名！</translation>
    </message>
    <message>
        <source>s</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>m</source>
        <translation>分</translation>
    </message>
    <message>
        <source>h</source>
        <translation>时</translation>
    </message>
    <message>
        <source>Theme colour</source>
        <translation>主题颜色</translation>
    </message>
    <message>
        <source> IP</source>
        <translation> IP</translation>
    </message>
    <message>
        <source>Dest Host</source>
        <translation>目标主机</translation>
    </message>
    <message>
        <source>Dest Port</source>
        <translation>目标端口</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>主机</translation>
    </message>
    <message>
        <source>Raw log: exactly the bytes received, no header</source>
        <translation>原始日志：只记录收到的原始字节，无文件头</translation>
    </message>
    <message>
        <source>Raw log includes sent bytes</source>
        <translation>原始日志包含发送的字节</translation>
    </message>
</context>
<context>
    <name>StatusTexts</name>
    <message>
        <source>UDP socket is bound to %1:%2.</source>
        <translation>UDP 套接字已绑定到 %1:%2。</translation>
    </message>
    <message>
        <source>Waiting for Connections on %1:%2...</source>
        <translation>正在 %1:%2 上等待连接...</translation>
    </message>
    <message>
        <source>Listening on %1:%2</source>
        <translation>正在 %1:%2 上监听</translation>
    </message>
    <message>
        <source>%1 OPENED, %2, %3, %4, %5, %6</source>
        <translation>%1 已打开，%2，%3，%4，%5，%6</translation>
    </message>
    <message>
        <source>%1 CLOSED</source>
        <translation>%1 已关闭</translation>
    </message>
    <message>
        <source>NONE</source>
        <translation>无校验</translation>
    </message>
    <message>
        <source>EVEN</source>
        <translation>偶校验</translation>
    </message>
    <message>
        <source>ODD</source>
        <translation>奇校验</translation>
    </message>
    <message>
        <source>SPACE</source>
        <translation>空格校验</translation>
    </message>
    <message>
        <source>MARK</source>
        <translation>标记校验</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>无流控</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>硬件流控</translation>
    </message>
    <message>
        <source>Xon/Xoff</source>
        <translation>软件流控 Xon/Xoff</translation>
    </message>
    <message>
        <source>%1 waiting for device...</source>
        <translation>%1 等待设备...</translation>
    </message>
    <message>
        <source>--- disconnected %1 ---</source>
        <translation>--- 已断开 %1 ---</translation>
    </message>
    <message>
        <source>--- reconnected %1 ---</source>
        <translation>--- 已重新连接 %1 ---</translation>
    </message>
</context>
<context>
    <name>ToolBox</name>
    <message>
        <source>Toolbox</source>
        <translation>工具箱</translation>
    </message>
    <message>
        <source>Hex/Text</source>
        <translation>十六进制/文本</translation>
    </message>
    <message>
        <source>Hex to Text</source>
        <translation>十六进制转文本</translation>
    </message>
    <message>
        <source>Text to Hex</source>
        <translation>文本转十六进制</translation>
    </message>
    <message>
        <source>CRC Calculator</source>
        <translation>CRC 计算器</translation>
    </message>
    <message>
        <source>ASCII</source>
        <translation>ASCII</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>宽度</translation>
    </message>
    <message>
        <source>Poly</source>
        <translation>多项式</translation>
    </message>
    <message>
        <source>Init</source>
        <translation>初始值</translation>
    </message>
    <message>
        <source>XorOut</source>
        <translation>结果异或值</translation>
    </message>
    <message>
        <source>RefIn</source>
        <translation>输入反转</translation>
    </message>
    <message>
        <source>RefOut</source>
        <translation>输出反转</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
    <message>
        <source>Calculate</source>
        <translation>计算</translation>
    </message>
</context>
<context>
    <name>ViewActions</name>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Find...</source>
        <translation>查找...</translation>
    </message>
    <message>
        <source>Highlight Rules...</source>
        <translation>高亮规则...</translation>
    </message>
    <message>
        <source>Save view as...</source>
        <translation>视图另存为...</translation>
    </message>
    <message>
        <source>Save View As</source>
        <translation>视图另存为</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>文本文件 (*.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Could not save %1:
%2</source>
        <translation>无法保存 %1：
%2</translation>
    </message>
</context>
</TS>
