<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>kestrel::style::Text</name>
    <message>
        <source>No items yet</source>
        <translation>項目はまだありません</translation>
    </message>
    <message>
        <source>Add apps, command files, or shell commands to your launcher.</source>
        <translation>アプリ、コマンドファイル、シェルコマンドをランチャーに追加してください。</translation>
    </message>
    <message>
        <source>Add First Item</source>
        <translation>最初の項目を追加</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>編集</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Edit Item</source>
        <translation>項目を編集</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>項目を追加</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>App</source>
        <translation>アプリ</translation>
    </message>
    <message>
        <source>File</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Browse…</source>
        <translation>参照…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>項目</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>上へ移動</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>下へ移動</translation>
    </message>
    <message>
        <source>Added %1</source>
        <translation>「%1」を追加しました</translation>
    </message>
    <message>
        <source>Moved to %1 of %2</source>
        <translation>%2 件中 %1 番目に移動しました</translation>
    </message>
    <message>
        <source>Deleted %1</source>
        <translation>「%1」を削除しました</translation>
    </message>
    <message>
        <source>Open Settings to add items.</source>
        <translation>設定を開いて項目を追加してください。</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>アプリケーションを選択</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>アプリケーション</translation>
    </message>
    <message>
        <source>No applications found</source>
        <translation>アプリケーションが見つかりません</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>その他…</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>選択</translation>
    </message>
</context>
</TS>
