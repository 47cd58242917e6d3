<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message>
        <source>Coast light</source>
        <translation>Küstenlicht</translation>
    </message>
</context>
</TS>
