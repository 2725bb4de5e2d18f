<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>kestrel::style::Text</name>
    <message>
        <source>No items yet</source>
        <translation>暂无项目</translation>
    </message>
    <message>
        <source>Add apps, command files, or shell commands to your launcher.</source>
        <translation>将应用、命令文件或 shell 命令添加到您的启动器。</translation>
    </message>
    <message>
        <source>Add First Item</source>
        <translation>添加第一个项目</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Edit Item</source>
        <translation>编辑项目</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>添加项目</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>App</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>浏览…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Added %1</source>
        <translation>已添加“%1”</translation>
    </message>
    <message>
        <source>Moved to %1 of %2</source>
        <translation>已移至第 %1 位，共 %2 项</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>已删除“%1”</translation>
    </message>
    <message>
        <source>Open Settings to add items.</source>
        <translation>打开“设置”以添加项目。</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>选择应用程序</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>应用程序</translation>
    </message>
    <message>
        <source>No applications found</source>
        <translation>未找到应用程序</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>其他…</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>选择</translation>
    </message>
</context>
</TS>
