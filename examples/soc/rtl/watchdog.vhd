-- SPDX-FileCopyrightText: The project's authors
-- SPDX-License-Identifier: MIT

-- Asks for a reset when it hasn't been kicked for a while. It must be kicked with alternating
-- magic words, so that a program that runs wild doesn't kick it by chance.
--
--   00  magic word (write)      04  cycles left (read)

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity watchdog is
    port (
        clk   : in  std_logic;
        rst   : in  std_logic;
        sel   : in  std_logic;
        we    : in  std_logic;
        addr  : in  std_logic_vector(7 downto 0);
        wdata : in  std_logic_vector(31 downto 0);
        rdata : out std_logic_vector(31 downto 0);
        ack   : out std_logic;
        bite  : out std_logic
    );
end entity watchdog;

architecture rtl of watchdog is

    constant MAGIC_A : std_logic_vector(15 downto 0) := x"5A5A";
    constant MAGIC_B : std_logic_vector(15 downto 0) := x"A5A5";

    signal cycles_left : unsigned(23 downto 0);
    signal expect_b    : std_logic;
    signal ack_now     : std_logic;
    signal kick        : std_logic;
    signal expired     : std_logic;

begin

    kick <= sel and we and not ack_now
            when (expect_b = '0' and wdata(15 downto 0) = MAGIC_A)
              or (expect_b = '1' and wdata(15 downto 0) = MAGIC_B)
            else '0';

    expired <= '1' when cycles_left = 0 else '0';

    count : process (clk)
    begin
        if rising_edge(clk) then
            ack_now <= sel and not ack_now;
            if rst = '1' then
                cycles_left <= (others => '1');
                expect_b    <= '0';
                ack_now     <= '0';
            elsif kick = '1' then
                cycles_left <= (others => '1');
                expect_b    <= not expect_b;
            elsif expired = '0' then
                cycles_left <= cycles_left - 1;
            end if;
        end if;
    end process count;

    rdata <= x"00" & std_logic_vector(cycles_left) when addr = x"04" else (others => '0');
    ack   <= ack_now;
    bite  <= expired;

end architecture rtl;
